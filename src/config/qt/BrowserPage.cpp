// SPDX-License-Identifier: GPL-3.0-or-later
#include "config/qt/BrowserPage.h"

#include <QKeyEvent>

#include "config/CookieStorePlaces.h"
#include "config/FileRequests.h"
#include "config/PollInterval.h"
#include "config/SearchBoxes.h"
#include "config/modGetOsVersion.h"
#include "platform/qt/ClickHandler.h"
#include "platform/qt/PastedLines.h"
#include "platform/qt/QtText.h"
#include "text/Numbers.h"
#include "ui_BrowserPage.h"

BrowserPage::BrowserPage(const OptionsSurroundings& surroundings, QWidget* parent)
    : QWidget(parent), to_(surroundings), ui_(std::make_unique<Ui::BrowserPage>()) {
  ui_->setupUi(this);
  cutPastedLines(*this);
  // A layout asks a text that is broken into lines for less than it needs in a narrow window.
  ui_->labChrome->setMinimumHeight(2 * ui_->labChrome->fontMetrics().lineSpacing());
  ui_->txtTempo->installEventFilter(this);
  connect(ui_->optNav_0, &QRadioButton::toggled, this, &BrowserPage::optNav_Click);
  connect(ui_->optNav_1, &QRadioButton::toggled, this, &BrowserPage::optNav_Click);
  onClick(ui_->cmdBrowse, this, to_.questions, u"cmdBrowse_Click", [this] { cmdBrowse_Click(); });
  // textEdited: the program's own rewriting of the box does not come back here.
  connect(ui_->txtTempo, &QLineEdit::textEdited, this, &BrowserPage::txtTempo_Change);
  connect(ui_->txtTempo, &QLineEdit::editingFinished, this, &BrowserPage::showInterval);
  connect(ui_->UpDown_Up, &QToolButton::clicked, this, &BrowserPage::UpDown_UpClick);
  connect(ui_->UpDown_Down, &QToolButton::clicked, this, &BrowserPage::UpDown_DownClick);
}

BrowserPage::~BrowserPage() = default;

void BrowserPage::load() {
  ui_->optNav_0->setChecked(to_.settings.browser == 0);
  ui_->optNav_1->setChecked(to_.settings.browser == 1);
  optNav_Click();
  setCookiesPath(to_.settings.cookiesPath);
  showInterval();
}

OptionsEntries BrowserPage::entries() const {
  std::optional<std::int16_t> browser;
  if (ui_->optNav_1->isChecked()) browser = std::int16_t{1};
  if (ui_->optNav_0->isChecked()) browser = std::int16_t{0};
  return {fromQt(ui_->txtPathCookies->text()), fromQt(ui_->txtTempo->text()), browser};
}

void BrowserPage::setCookiesPath(const Text& path) { ui_->txtPathCookies->setText(toQt(path)); }

void BrowserPage::focusCookiesPath() { ui_->txtPathCookies->setFocus(); }

void BrowserPage::optNav_Click() { ui_->labChrome->setVisible(ui_->optNav_1->isChecked()); }

void BrowserPage::cmdBrowse_Click() {
  const std::int16_t browser = entries().browser.value_or(0);
  const Text folder = cookieStartFolder(browser, modGetOsVersion(), userFolders());
  if (browser == 0) to_.questions.ask(cookieStoreHintBox(folder));
  const std::optional<Text> path = to_.questions.chooseFile(cookieFileRequest(browser, folder));
  if (path) setCookiesPath(*path);
}

// The interval follows each keystroke. An empty box is on its way to something: it is filled again
// when it is left.
void BrowserPage::txtTempo_Change() {
  const Text typed = fromQt(ui_->txtTempo->text());
  to_.settings.pollInterval = typedInterval(typed, to_.locale).value_or(to_.settings.pollInterval);
  if (!typed.empty()) showInterval();
}

void BrowserPage::UpDown_UpClick() {
  to_.settings.pollInterval = longerInterval(to_.settings.pollInterval);
  showInterval();
}

void BrowserPage::UpDown_DownClick() {
  to_.settings.pollInterval = shorterInterval(to_.settings.pollInterval);
  showInterval();
}

void BrowserPage::showInterval() {
  ui_->txtTempo->setText(toQt(numberText(std::int64_t{to_.settings.pollInterval})));
}

// The arrow keys do in the box what the two buttons do beside it.
bool BrowserPage::eventFilter(QObject* watched, QEvent* event) {
  if (watched == ui_->txtTempo && event->type() == QEvent::KeyPress) {
    const int key = static_cast<QKeyEvent*>(event)->key();
    if (key == Qt::Key_Up) return UpDown_UpClick(), true;
    if (key == Qt::Key_Down) return UpDown_DownClick(), true;
  }
  return QWidget::eventFilter(watched, event);
}
