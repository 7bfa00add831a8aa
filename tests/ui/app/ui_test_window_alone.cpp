// SPDX-License-Identifier: GPL-3.0-or-later
#include <QTableWidget>
#include <QTimer>

#include "app/TestWindow.h"
#include "config/ConfigFile.h"
#include "config/ShortcutStore.h"
#include "support/Doubles.h"
#include "support/Scratch.h"
#include "ui/UiMain.h"

namespace {

// Runs the window and closes it; the number of rows that it showed.
int rowsShown(Companion& companion, Questions& questions) {
  int rows = -1;
  QTimer::singleShot(0, [&] {
    for (QWidget* window : QApplication::topLevelWidgets()) {
      if (window->objectName() != QStringLiteral("frmTest")) continue;
      rows = control<QTableWidget>(*window, "Grid").rowCount();
      window->close();
    }
  });
  EXPECT_EQ(runTestWindow(companion, questions), 0);
  return rows;
}

struct ProgramFolder : Scratch {
  ProgramFolder() { companion.programFolder = text(); }

  void table(const char* name, int entries) const {
    std::string bytes = "var FreeId=9\r\nvar tabObj = new Object();\r\n";
    for (int i = 0; i < entries; ++i) bytes += "tabObj[\"000000003\"]=\"n_|_a\";\r\n";
    write(name, bytes + "function\r\n");
  }

  Companion companion;
  Journal journal;
  ScriptedQuestions questions{journal};
};

}  // namespace

TEST(TestWindowAlone, ReadsTheTableThatTheSettingsName) {
  ProgramFolder folder;
  folder.companion.locale = frenchLocale();
  Settings settings;
  settings.shortcutPath = folder.text("autre.js");
  folder.write("config.cfg", configBytes(settings, frenchLocale()));
  folder.table("autre.js", 3);
  folder.table("nav/res_css/js/shortQrCode.js", 1);
  EXPECT_EQ(rowsShown(folder.companion, folder.questions), 3);
}

TEST(TestWindowAlone, WithoutSettingsItIsTheTableAtItsDefaultPlace) {
  ProgramFolder folder;
  folder.companion.locale = frenchLocale();
  folder.table("nav/res_css/js/shortQrCode.js", 1);
  EXPECT_EQ(rowsShown(folder.companion, folder.questions), 1);
}
