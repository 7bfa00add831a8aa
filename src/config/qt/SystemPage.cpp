// SPDX-License-Identifier: GPL-3.0-or-later
#include "config/qt/SystemPage.h"

#include "config/ConfigFile.h"
#include "config/OptionsBoxes.h"
#include "config/modGetOsVersion.h"
#include "platform/qt/ClickHandler.h"
#include "platform/qt/QtText.h"
#include "ui_SystemPage.h"

SystemPage::SystemPage(const OptionsSurroundings& surroundings, QWidget* parent)
    : QWidget(parent), to_(surroundings), ui_(std::make_unique<Ui::SystemPage>()) {
  ui_->setupUi(this);
  ui_->labWinVersion->setText(toQt(modGetOsVersion()));
  ui_->txtPathCfg->setText(toQt(configPath(to_.programFolder)));
  ui_->grpStart->setVisible(to_.autostart != nullptr);
  ui_->grpCheck->setVisible(static_cast<bool>(to_.checkInstallation));
  onClick(ui_->cmdCheck, this, to_.questions, u"cmdCheck_Click",
          [this] { to_.checkInstallation(); });
  onClick(ui_->cmdOpenCfg, this, to_.questions, u"cmdOpenCfg_Click",
          [this] { cmdOpenCfg_Click(); });
}

SystemPage::~SystemPage() = default;

void SystemPage::load() {
  if (to_.autostart) ui_->chkAutostart->setChecked(to_.autostart->isOn());
}

void SystemPage::apply() {
  const bool wanted = ui_->chkAutostart->isChecked();
  if (!to_.autostart || to_.autostart->isOn() == wanted) return;
  if (const Failure failure = to_.autostart->set(wanted)) to_.questions.ask(autostartBox(failure));
  load();
}

void SystemPage::cmdOpenCfg_Click() {
  const Failure failure = to_.shell.startCommandLine(u"notepad " + configPath(to_.programFolder));
  if (failure) to_.questions.ask(errorBox(u"cmdOpenCfg_Click", failure.description));
}
