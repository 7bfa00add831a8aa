// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/Toolkit.h"

#include <QByteArray>

// The notice must stand at a place of its own choice, which X11 grants and Wayland does not: where
// both are there, X11 it is.
void chooseWindowPlatform() {
  if (!qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) return;
  if (!qEnvironmentVariableIsEmpty("DISPLAY")) qputenv("QT_QPA_PLATFORM", "xcb");
}

std::vector<std::string> ownArguments(int count, char** arguments) {
  return {arguments + 1, arguments + count};
}
