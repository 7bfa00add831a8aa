// SPDX-License-Identifier: GPL-3.0-or-later
#include "config/qt/DisplayPage.h"

#include "platform/qt/ClickHandler.h"
#include "platform/qt/QtText.h"
#include "text/Numbers.h"
#include "ui_DisplayPage.h"

DisplayPage::DisplayPage(const OptionsSurroundings& surroundings, QWidget* parent)
    : QWidget(parent), to_(surroundings), ui_(std::make_unique<Ui::DisplayPage>()) {
  ui_->setupUi(this);
  connect(ui_->txtScaleX, &QLineEdit::textEdited, this, &DisplayPage::txtScaleX_Change);
  connect(ui_->txtScaleY, &QLineEdit::textEdited, this, &DisplayPage::txtScaleY_Change);
  connect(ui_->chkInfos, &QCheckBox::clicked, this, &DisplayPage::chkInfos_Click);
  onClick(ui_->cmdTestGraph, this, to_.questions, u"cmdTestGraph_Click",
          [this] { to_.MenuAbout_Click(); });
}

DisplayPage::~DisplayPage() = default;

void DisplayPage::load() {
  const Settings& settings = to_.settings;
  ui_->txtScaleX->setText(toQt(numberText(settings.scaleX, to_.locale)));
  ui_->txtScaleY->setText(toQt(numberText(settings.scaleY, to_.locale)));
  // config.cfg may hold 2, neither yes nor no: the first click decides.
  ui_->chkInfos->setTristate(settings.notifications == 2);
  ui_->chkInfos->setCheckState(settings.notifications == 2   ? Qt::PartiallyChecked
                               : settings.notifications == 1 ? Qt::Checked
                                                             : Qt::Unchecked);
}

void DisplayPage::txtScaleX_Change() {
  double& scale = to_.settings.scaleX;
  scale = toDouble(fromQt(ui_->txtScaleX->text()), to_.locale).value_or(scale);
}

void DisplayPage::txtScaleY_Change() {
  double& scale = to_.settings.scaleY;
  scale = toDouble(fromQt(ui_->txtScaleY->text()), to_.locale).value_or(scale);
}

void DisplayPage::chkInfos_Click() {
  ui_->chkInfos->setTristate(false);
  to_.settings.notifications = ui_->chkInfos->isChecked() ? 1 : 0;
}
