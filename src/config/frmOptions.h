// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDialog>
#include <memory>

#include "config/OptionsSurroundings.h"

namespace Ui {
class frmOptions;
}

class BrowserPage;
class DisplayPage;
class ShortcutsPage;
class SystemPage;

// The settings' window. Each of its tabs is a page of its own; here they are joined, applied and
// left. It is hidden, never destroyed, and shows the one settings record: it stores nothing.
class frmOptions : public QDialog {
  Q_OBJECT

 public:
  explicit frmOptions(OptionsSurroundings surroundings);
  ~frmOptions() override;

  // The load handler, to be called once. False when the program is to end.
  bool Form_Load();

  // Shows the settings in the controls.
  void showSettings();

  // What a search does with the window: another path in the box, then apply and close. False when
  // apply rejected the path.
  void setCookiesPath(const Text& path);
  bool cmdClose_Click();

  // Escape and the title bar's close box.
  void reject() override;

 protected:
  void closeEvent(QCloseEvent* event) override;
  void showEvent(QShowEvent* event) override;

 private:
  bool cmdOk_Click();
  void cmdCancel_Click();

  OptionsSurroundings to_;
  std::unique_ptr<Ui::frmOptions> ui_;
  ShortcutsPage* shortcuts_;
  BrowserPage* browser_;
  DisplayPage* display_;
  SystemPage* system_;
};
