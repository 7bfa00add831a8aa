// SPDX-License-Identifier: GPL-3.0-or-later
#include "config/qt/ShortcutsPage.h"

#include <QHeaderView>
#include <algorithm>

#include "config/ConfigBoxes.h"
#include "config/FileRequests.h"
#include "config/OptionsBoxes.h"
#include "config/SearchBoxes.h"
#include "config/ShortcutStore.h"
#include "platform/qt/ClickHandler.h"
#include "platform/qt/PastedLines.h"
#include "platform/qt/QtText.h"
#include "text/Paths.h"
#include "ui_ShortcutsPage.h"

namespace {

constexpr int kTwipsPerPixel = 15;
constexpr int kColumnTwips[] = {1000, 4000, 50000};

void setUpGrid(QTableView& grid) {
  for (int column = 0; column < ShortcutGridModel::kColumns; ++column) {
    grid.setColumnWidth(column, kColumnTwips[column] / kTwipsPerPixel);
  }
  // A key is to be read whole, whatever the desktop's font.
  constexpr int kMargins = 10;
  const int key = grid.fontMetrics().horizontalAdvance(QStringLiteral("000000000")) + kMargins;
  grid.setColumnWidth(0, std::max(grid.columnWidth(0), key));
  grid.horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
  // Rows of one height need not be measured, however many there are.
  grid.verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
  grid.verticalHeader()->setDefaultSectionSize(grid.fontMetrics().height() + 6);
}

}  // namespace

ShortcutsPage::ShortcutsPage(const OptionsSurroundings& surroundings, QWidget* parent)
    : QWidget(parent),
      to_(surroundings),
      ui_(std::make_unique<Ui::ShortcutsPage>()),
      model_(surroundings.shortcuts) {
  ui_->setupUi(this);
  cutPastedLines(*this);
  ui_->Grid->setModel(&model_);
  setUpGrid(*ui_->Grid);
  subscription_ = to_.shortcuts.subscribe([this] { showCaption(); });
  connect(ui_->Grid->selectionModel(), &QItemSelectionModel::currentChanged, this,
          &ShortcutsPage::Grid_Click);
  connect(ui_->txtNameQrCode, &QLineEdit::textEdited, this, &ShortcutsPage::txtNameQrCode_Change);
  connect(ui_->txtQrCode, &QLineEdit::textEdited, this, &ShortcutsPage::txtQrCode_Change);

  onClick(ui_->cmdDel, this, to_.questions, u"cmdDel_Click", [this] { cmdDel_Click(); });
  onClick(ui_->cmdJs, this, to_.questions, u"cmdJs_Click", [this] { cmdJs_Click(); });
  onClick(ui_->cmdOpenJs, this, to_.questions, u"cmdOpenJs_Click", [this] { cmdOpenJs_Click(); });
  showCaption();
  Grid_Click();
}

ShortcutsPage::~ShortcutsPage() { to_.shortcuts.unsubscribe(subscription_); }

void ShortcutsPage::load() { ui_->txtPathJs->setText(toQt(to_.settings.shortcutPath)); }

void ShortcutsPage::showCaption() {
  ui_->frame_1->setTitle(toQt(shortcutCaption(to_.shortcuts.rows().size())));
}

int ShortcutsPage::selectedRow() const { return ui_->Grid->currentIndex().row() + 1; }

Shortcut ShortcutsPage::selected() const {
  const auto row = static_cast<std::size_t>(selectedRow());
  const auto& rows = to_.shortcuts.rows();
  return row >= 1 && row <= rows.size() ? rows[row - 1] : Shortcut();
}

void ShortcutsPage::Grid_Click() {
  const int row = selectedRow();
  const Shortcut shortcut = selected();
  ui_->labXY->setText(
      row == 0 ? QString()
               : QStringLiteral("L%1 - C%2").arg(row).arg(ui_->Grid->currentIndex().column()));
  ui_->txtIdQrCode->setText(toQt(shortcut.key));
  ui_->txtNameQrCode->setText(toQt(shortcut.name));
  ui_->txtQrCode->setText(toQt(shortcut.address));
  ui_->txtNameQrCode->setEnabled(row >= 1);
  ui_->txtQrCode->setEnabled(row >= 1);
}

void ShortcutsPage::txtNameQrCode_Change() {
  if (selectedRow() < 1) return;
  Shortcut shortcut = selected();
  shortcut.name = fromQt(ui_->txtNameQrCode->text());
  to_.shortcuts.setRow(static_cast<std::size_t>(selectedRow() - 1), shortcut);
}

void ShortcutsPage::txtQrCode_Change() {
  if (selectedRow() < 1) return;
  Shortcut shortcut = selected();
  shortcut.address = fromQt(ui_->txtQrCode->text());
  to_.shortcuts.setRow(static_cast<std::size_t>(selectedRow() - 1), shortcut);
}

void ShortcutsPage::cmdDel_Click() {
  if (selectedRow() < 2) {
    to_.questions.ask(firstRowStaysBox());
    return;
  }
  to_.shortcuts.removeRow(static_cast<std::size_t>(selectedRow() - 1));
  Grid_Click();
}

void ShortcutsPage::cmdJs_Click() {
  const std::optional<Text> path = to_.questions.chooseFile(shortcutFileRequest(to_.programFolder));
  if (!path) return;
  to_.settings.shortcutPath = *path;
  to_.shortcuts.clear();
  const ShortcutLoad load =
      loadShortcuts(to_.settings, to_.shortcuts, to_.programFolder, to_.locale, to_.questions);
  this->load();
  if (load == ShortcutLoad::Ended) {
    to_.endProgram();
    return;
  }
  to_.questions.ask(shortcutsReadAgainBox(to_.shortcuts.rows().size()));
}

void ShortcutsPage::cmdOpenJs_Click() {
  if (to_.questions.ask(editShortcutsBox()) != Answer::Ok) return;
  Failure failure = backUpShortcuts(to_.settings, to_.programFolder);
  if (!failure)
    failure = to_.shell.startCommandLine(u"notepad " + nativePath(to_.settings.shortcutPath));
  if (failure) to_.questions.ask(errorBox(u"cmdOpenJs_Click", failure.description));
}
