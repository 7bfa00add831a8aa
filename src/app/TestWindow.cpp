// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/TestWindow.h"

#include <QApplication>

#include "config/ConfigFile.h"
#include "platform/Files.h"
#include "windows/frmTest.h"

int runTestWindow(Companion& companion, Questions& questions) {
  Settings& settings = companion.settings;
  prepareForReading(settings, companion.programFolder);
  std::string bytes;
  // Without settings it is the table at its default place.
  if (!readFile(configPath(companion.programFolder), bytes)) {
    readConfig(bytes, companion.locale, settings, {});
  }
  frmTest window({settings.shortcutPath, companion.locale, questions, companion.shortcuts});
  window.show();
  window.Form_Load();
  QApplication::setQuitOnLastWindowClosed(true);
  return QApplication::exec();
}
