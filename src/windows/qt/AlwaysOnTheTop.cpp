// SPDX-License-Identifier: GPL-3.0-or-later
#include "windows/qt/AlwaysOnTheTop.h"

#include <QWindow>

void MettreAuPremierPlan(QWidget& window, bool onTop) {
  Qt::WindowFlags flags = window.windowFlags();
  flags.setFlag(Qt::WindowStaysOnTopHint, onTop);
  // setWindowFlags would hide a shown window and make it anew.
  window.overrideWindowFlags(flags);
  if (QWindow* native = window.windowHandle()) native->setFlags(flags);
}
