// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <optional>

// True when somebody shows tray icons of X11's kind on the screen that DISPLAY names; false also
// where there is no such screen. Nothing where the program was built without X11.
std::optional<bool> x11TrayStands();
