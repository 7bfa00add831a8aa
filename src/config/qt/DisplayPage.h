// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QWidget>
#include <memory>

#include "config/OptionsSurroundings.h"

namespace Ui {
class DisplayPage;
}

// The options window's page about what the program shows: the graphic scales, the messages. Every
// edit is in the settings at once.
class DisplayPage : public QWidget {
  Q_OBJECT

 public:
  explicit DisplayPage(const OptionsSurroundings& surroundings, QWidget* parent = nullptr);
  ~DisplayPage() override;

  // Shows the settings in the controls.
  void load();

 private:
  void txtScaleX_Change();
  void txtScaleY_Change();
  void chkInfos_Click();

  const OptionsSurroundings& to_;
  std::unique_ptr<Ui::DisplayPage> ui_;
};
