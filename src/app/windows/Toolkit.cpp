// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/Toolkit.h"

#include <QCoreApplication>

#include "platform/qt/QtText.h"
#include "text/Utf.h"

void chooseWindowPlatform() {}

// main() is handed what the ANSI code page can express; the toolkit asked for all of it.
std::vector<std::string> ownArguments(int /*count*/, char** /*arguments*/) {
  std::vector<std::string> own;
  for (const QString& argument : QCoreApplication::arguments().mid(1)) {
    own.push_back(toUtf8Lossless(fromQt(argument)));
  }
  return own;
}
