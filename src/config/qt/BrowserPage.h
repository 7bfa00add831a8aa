// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QWidget>
#include <memory>

#include "config/OptionsApply.h"
#include "config/OptionsSurroundings.h"

namespace Ui {
class BrowserPage;
}

// The options window's page about the watched browser: which one, its cookie store, how often it is
// looked at.
class BrowserPage : public QWidget {
  Q_OBJECT

 public:
  explicit BrowserPage(const OptionsSurroundings& surroundings, QWidget* parent = nullptr);
  ~BrowserPage() override;

  // Shows the settings in the controls.
  void load();

  // What apply takes from the controls.
  OptionsEntries entries() const;

  void setCookiesPath(const Text& path);
  void focusCookiesPath();

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void optNav_Click();
  void cmdBrowse_Click();
  void txtTempo_Change();
  void UpDown_UpClick();
  void UpDown_DownClick();
  void showInterval();

  const OptionsSurroundings& to_;
  std::unique_ptr<Ui::BrowserPage> ui_;
};
