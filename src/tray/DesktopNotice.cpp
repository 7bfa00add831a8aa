// SPDX-License-Identifier: GPL-3.0-or-later
#include "tray/DesktopNotice.h"

bool windowsPlaceThemselves(const QString& platformName) {
  return !platformName.startsWith(QStringLiteral("wayland"));
}
