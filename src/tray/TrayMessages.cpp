// SPDX-License-Identifier: GPL-3.0-or-later
#include "tray/TrayMessages.h"

#include <cmath>

#include "text/Numbers.h"

Text tipText(int major, int minor, int revision) {
  Text tip = u"Tavrollo V" + numberText(major) + u"." + numberText(minor) + u"." +
             numberText(revision);
  tip.resize(kTipLength, u' ');
  return tip;
}

int trayMessage(double x, double twipsPerPixel) {
  return static_cast<int>(std::lround(x / twipsPerPixel));
}

bool popsMenuUp(int message) {
  return message == kLeftButtonDown || message == kLeftButtonUp || message == kRightButtonDown;
}
