// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/linux/X11Tray.h"

std::optional<bool> x11TrayStands() { return std::nullopt; }
