// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QWidget>
#include <memory>

#include "config/OptionsSurroundings.h"

namespace Ui {
class SystemPage;
}

// The options window's page about the system under the program: its version, whether a session
// starts the program, the settings' file.
class SystemPage : public QWidget {
  Q_OBJECT

 public:
  explicit SystemPage(const OptionsSurroundings& surroundings, QWidget* parent = nullptr);
  ~SystemPage() override;

  // Shows what the desktop says now.
  void load();

  // Tells the desktop what was chosen here, when that is something else.
  void apply();

 private:
  void cmdOpenCfg_Click();

  const OptionsSurroundings& to_;
  std::unique_ptr<Ui::SystemPage> ui_;
};
