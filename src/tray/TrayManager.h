// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

// True when somebody shows tray icons now. It asks the desktop itself, since the toolkit must not
// be asked before the answer is yes.
bool trayManagerStands();
