// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QWidget>
#include <memory>

class TrayMenu;
namespace Ui {
class MenuWindow;
}

// Stands in for the tray icon on a desktop without a tray: a small window whose button pops the
// tray menu up. Closing it only minimises it, so that the program never runs out of sight.
class MenuWindow : public QWidget {
  Q_OBJECT

 public:
  explicit MenuWindow(TrayMenu& menu);
  ~MenuWindow() override;

 protected:
  void closeEvent(QCloseEvent* event) override;

 private:
  void cmdMenu_Click();

  TrayMenu& menu_;
  std::unique_ptr<Ui::MenuWindow> ui_;
};
