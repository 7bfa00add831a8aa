// SPDX-License-Identifier: GPL-3.0-or-later
#include "tray/TrayManager.h"

bool trayManagerStands() { return true; }
