// SPDX-License-Identifier: GPL-3.0-or-later
#include "config/frmRecursiveSearch.h"

#include <QCloseEvent>
#include <QKeyEvent>

#include "config/CookieStoreDetails.h"
#include "config/CookieStoreSearch.h"
#include "config/SearchBoxes.h"
#include "platform/Guarded.h"
#include "platform/qt/Centre.h"
#include "platform/qt/ClickHandler.h"
#include "platform/qt/PastedLines.h"
#include "platform/qt/QtText.h"
#include "platform/qt/ReturnKey.h"
#include "ui_frmRecursiveSearch.h"

frmRecursiveSearch::frmRecursiveSearch(SearchSurroundings surroundings)
    : to_(std::move(surroundings)), ui_(std::make_unique<Ui::frmRecursiveSearch>()) {
  ui_->setupUi(this);
  pressWithReturn(*this);
  cutPastedLines(*this);
  ui_->cmdClose->hide();  // until there is an outcome
  centre(*this);

  onClick(ui_->cmdOk, this, to_.questions, u"cmdOk_Click", [this] { cmdOk_Click(); });
  onClick(ui_->cmdClose, this, to_.questions, u"cmdClose_Click", [this] { cmdClose_Click(); });
  connect(ui_->listResult, &QListWidget::itemClicked, this,
          [this] { guarded(to_.questions, u"listResult_Click", [this] { listResult_Click(); }); });
  connect(ui_->listResult, &QListWidget::currentRowChanged, this, &frmRecursiveSearch::showDetails);
  ui_->listResult->installEventFilter(this);
}

frmRecursiveSearch::~frmRecursiveSearch() = default;

void frmRecursiveSearch::search(const Text& folder, const Text& pattern) {
  if (searching_) return;
  ui_->txtPath->setText(toQt(folder));
  ui_->txtFile->setText(toQt(pattern));
  show();
  raise();
  activateWindow();
  LancerLaRecherche_FSO();
}

void frmRecursiveSearch::cmdOk_Click() { LancerLaRecherche_FSO(); }

void frmRecursiveSearch::cmdClose_Click() {
  stopped_ = true;
  to_.MenuAbout_Click();
  hide();
}

void frmRecursiveSearch::reject() {
  guarded(to_.questions, u"cmdClose_Click", [this] { cmdClose_Click(); });
}

// In the list the return key does what a click does.
bool frmRecursiveSearch::eventFilter(QObject* watched, QEvent* event) {
  if (watched == ui_->listResult && event->type() == QEvent::KeyPress) {
    const int key = static_cast<QKeyEvent*>(event)->key();
    if (key == Qt::Key_Return || key == Qt::Key_Enter) {
      guarded(to_.questions, u"listResult_Click", [this] { listResult_Click(); });
      return true;
    }
  }
  return QDialog::eventFilter(watched, event);
}

void frmRecursiveSearch::closeEvent(QCloseEvent* event) {
  event->ignore();
  reject();
}

void frmRecursiveSearch::LancerLaRecherche_FSO() {
  // The walk lets events in: another click must not begin a second one.
  if (searching_) return;
  searching_ = true;
  stopped_ = false;
  choiceAllowed_ = false;
  ui_->cmdOk->setEnabled(false);
  ui_->listResult->clear();
  ui_->labNbre->clear();
  ui_->labDetails->clear();

  const SearchEnd end = walk();
  ui_->List1->clear();
  ui_->cmdOk->setEnabled(true);
  searching_ = false;

  if (end == SearchEnd::Stopped) return;
  ui_->cmdClose->show();
  if (end == SearchEnd::NoStartFolder) {
    to_.questions.ask(startFolderMissingBox(fromQt(ui_->txtPath->text())));
    return;
  }
  concludeSearch();
}

SearchEnd frmRecursiveSearch::walk() {
  const auto visited = [this](const Text& folder) {
    to_.pumpEvents();
    ui_->labDir->setText(toQt(folder));
    return !stopped_;
  };
  const auto done = [this](const Text&) { delete ui_->List1->takeItem(0); };
  const auto queued = [this](const Text& folder) { ui_->List1->addItem(toQt(folder)); };
  const auto found = [this](const Text& path) { addResult(path); };
  return searchCookieStores({.folder = fromQt(ui_->txtPath->text()),
                             .pattern = fromQt(ui_->txtFile->text()),
                             .folderQueued = queued,
                             .folderVisited = visited,
                             .folderDone = done,
                             .found = found})
      .end;
}

void frmRecursiveSearch::addResult(const Text& path) { ui_->listResult->addItem(toQt(path)); }

// What helps to tell the store in use from an old one.
void frmRecursiveSearch::showDetails(int row) {
  ui_->labDetails->setText(row < 0 ? QString() : toQt(cookieStoreDetails(result(row), to_.locale)));
}

Text frmRecursiveSearch::result(int row) const {
  return fromQt(ui_->listResult->item(row)->text());
}

void frmRecursiveSearch::concludeSearch() {
  const auto count = static_cast<std::size_t>(ui_->listResult->count());
  ui_->labNbre->setText(toQt(searchResultText(count)));
  ui_->labDir->setText(toQt(searchEndText()));
  to_.showSettings();

  if (count == 0) {
    ui_->labDetails->setText(toQt(searchAgainText()));
    to_.questions.ask(noCookieStoreBox());
    to_.settings.cookiesPath.clear();
    to_.storeNotFound();
    ui_->cmdOk->setFocus();
  } else if (count == 1) {
    to_.settings.cookiesPath = result(0);
    choose(result(0));
  } else {
    choiceAllowed_ = true;
    to_.questions.ask(severalCookieStoresBox(count));
    // Said here: of itself, the list makes its first line the current one only in an active window.
    ui_->listResult->setCurrentRow(0);
    ui_->listResult->setFocus();
  }
}

void frmRecursiveSearch::listResult_Click() {
  const int row = ui_->listResult->currentRow();
  if (!choiceAllowed_ || row < 0) return;
  const Text path = result(row);
  to_.settings.cookiesPath = path;
  if (to_.questions.ask(confirmCookieStoreBox(path)) == Answer::Yes) choose(path);
}

// The window stays until it is closed, and the page that opens may lie below it.
void frmRecursiveSearch::choose(const Text& path) {
  ui_->labDetails->setText(toQt(storeChosenText()));
  to_.storeChosen(path);
}
