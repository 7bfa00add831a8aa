// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QWidget>
#include <memory>

#include "config/OptionsSurroundings.h"
#include "config/qt/ShortcutGridModel.h"

namespace Ui {
class ShortcutsPage;
}

// The options window's page about the shortcuts: their file, their grid, and the boxes in which the
// selected one is edited. Every edit is in the table at once; the file is written by apply.
class ShortcutsPage : public QWidget {
  Q_OBJECT

 public:
  explicit ShortcutsPage(const OptionsSurroundings& surroundings, QWidget* parent = nullptr);
  ~ShortcutsPage() override;

  // Shows the settings in the controls. The grid shows the table by itself.
  void load();

 private:
  void Grid_Click();
  void txtNameQrCode_Change();
  void txtQrCode_Change();
  void cmdDel_Click();
  void cmdJs_Click();
  void cmdOpenJs_Click();

  void showCaption();
  int selectedRow() const;  // from 1; 0 while none is
  Shortcut selected() const;

  const OptionsSurroundings& to_;
  std::unique_ptr<Ui::ShortcutsPage> ui_;
  ShortcutGridModel model_;
  int subscription_;
};
