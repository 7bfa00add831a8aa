// SPDX-License-Identifier: GPL-3.0-or-later
#include "tray/DesktopNotice.h"

// Windows place themselves here, whatever shows them.
std::unique_ptr<DesktopNotice> desktopNoticeFor(const QString& /*platformName*/) { return nullptr; }
