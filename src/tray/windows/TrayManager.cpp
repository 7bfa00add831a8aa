// SPDX-License-Identifier: GPL-3.0-or-later
#include "tray/TrayManager.h"

#include <QWidget>

bool trayManagerStands() { return true; }

// An icon that was added too early, or whose taskbar ended, is added anew by the toolkit.
void announceTrays(QObject* /*listener*/) {}

void menuPoppedUp(QWidget& menu) { menu.activateWindow(); }
