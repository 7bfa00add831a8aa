// SPDX-License-Identifier: GPL-3.0-or-later
#include "config/frmOptions.h"

#include <QCloseEvent>
#include <QShowEvent>

#include "config/OptionsApply.h"
#include "config/ShortcutStore.h"
#include "config/qt/BrowserPage.h"
#include "config/qt/DisplayPage.h"
#include "config/qt/ShortcutsPage.h"
#include "config/qt/SystemPage.h"
#include "platform/Guarded.h"
#include "platform/qt/Centre.h"
#include "platform/qt/ClickHandler.h"
#include "platform/qt/ReturnKey.h"
#include "ui_frmOptions.h"

namespace {

// The last control of a page in the order of the tab key.
QWidget* lastControl(QWidget* page) {
  QWidget* last = page;
  while (page->isAncestorOf(last->nextInFocusChain())) last = last->nextInFocusChain();
  return last;
}

}  // namespace

frmOptions::frmOptions(OptionsSurroundings surroundings)
    : to_(std::move(surroundings)),
      ui_(std::make_unique<Ui::frmOptions>()),
      shortcuts_(new ShortcutsPage(to_)),
      browser_(new BrowserPage(to_)),
      display_(new DisplayPage(to_)),
      system_(new SystemPage(to_)) {
  ui_->setupUi(this);
  ui_->tbsOptions->addTab(shortcuts_, QStringLiteral("Raccourcis"));
  ui_->tbsOptions->addTab(browser_, QStringLiteral("Navigateur"));
  ui_->tbsOptions->addTab(display_, QStringLiteral("Affichage"));
  ui_->tbsOptions->addTab(system_, QStringLiteral("Système"));
  pressWithReturn(*this);
  // The pages came behind the buttons: the tab key is to go through the page first.
  setTabOrder(lastControl(system_), ui_->cmdOk);
  setTabOrder(ui_->cmdOk, ui_->cmdClose);
  setTabOrder(ui_->cmdClose, ui_->cmdCancel);

  onClick(ui_->cmdOk, this, to_.questions, u"cmdOk_Click", [this] { cmdOk_Click(); });
  onClick(ui_->cmdClose, this, to_.questions, u"cmdClose_Click", [this] { cmdClose_Click(); });
  onClick(ui_->cmdCancel, this, to_.questions, u"cmdCancel_Click", [this] { cmdCancel_Click(); });
}

frmOptions::~frmOptions() = default;

bool frmOptions::Form_Load() {
  centre(*this);
  ui_->tbsOptions->setCurrentWidget(browser_);  // what most users come for
  browser_->focusCookiesPath();
  if (!to_.shortcuts.wasLoaded()) {
    const ShortcutLoad load =
        loadShortcuts(to_.settings, to_.shortcuts, to_.programFolder, to_.locale, to_.questions);
    if (load == ShortcutLoad::Ended) return false;
  }
  showSettings();
  return true;
}

void frmOptions::showSettings() {
  shortcuts_->load();
  browser_->load();
  display_->load();
  system_->load();
}

void frmOptions::setCookiesPath(const Text& path) { browser_->setCookiesPath(path); }

bool frmOptions::cmdOk_Click() {
  const OptionsTarget target{to_.settings, to_.shortcuts, to_.programFolder,
                             to_.locale,   to_.questions, to_.setInterval};
  const Applied applied = applyOptions(browser_->entries(), target);
  if (applied == Applied::Ended) to_.endProgram();
  if (applied == Applied::Saved) system_->apply();
  return applied == Applied::Saved;
}

bool frmOptions::cmdClose_Click() {
  if (!cmdOk_Click()) return false;
  hide();
  to_.restartWatching();
  return true;
}

void frmOptions::cmdCancel_Click() {
  hide();
  to_.pumpEvents();
  to_.InitVar();
}

void frmOptions::reject() {
  guarded(to_.questions, u"cmdCancel_Click", [this] { cmdCancel_Click(); });
}

// The desktop's own switch may have been used since the window was hidden.
void frmOptions::showEvent(QShowEvent* event) {
  QDialog::showEvent(event);
  if (!event->spontaneous()) system_->load();
}

void frmOptions::closeEvent(QCloseEvent* event) {
  event->ignore();
  reject();
}
