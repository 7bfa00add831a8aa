// SPDX-License-Identifier: GPL-3.0-or-later
#include "tray/TrayMessages.h"

#include <cmath>

Text tipText(const ProgramVersion& version) {
  Text tip = u"Tavrollo " + versionText(version);
  tip.resize(kTipLength, u' ');
  return tip;
}

int trayMessage(double x, double twipsPerPixel) {
  return static_cast<int>(std::lround(x / twipsPerPixel));
}

bool popsMenuUp(int message) {
  return message == kLeftButtonDown || message == kLeftButtonUp || message == kRightButtonDown;
}
