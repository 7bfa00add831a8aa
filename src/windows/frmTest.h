// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QWidget>
#include <memory>

#include "config/ShortcutTable.h"
#include "platform/Questions.h"
#include "text/LocaleData.h"
#include "text/Text.h"

namespace Ui {
class frmTest;
}

struct TestSurroundings {
  const Text& shortcutPath;  // of the table that the settings name
  const LocaleData& locale;
  Questions& questions;
  ShortcutTable& shortcuts;  // the program's own
};

// For developers: the UTF-8 conversions by hand, and what the shortcut table's file holds.
class frmTest : public QWidget {
  Q_OBJECT

 public:
  explicit frmTest(TestSurroundings surroundings);
  ~frmTest() override;

  // Fills the grid. What stops the reading is told in a box; what was read until then is shown.
  void Form_Load();

 protected:
  void keyPressEvent(QKeyEvent* event) override;

 private:
  void cmdEncodeUtf8_Click();
  void cmdDecodeUtf8_Click();
  void Grid_Click(int row, int column);

  TestSurroundings to_;
  std::unique_ptr<Ui::frmTest> ui_;
};
