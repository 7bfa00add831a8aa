// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/Questions.h"

// Another instance runs: relaunch the program (Yes), or not.
Box alreadyRunningBox();

// Firefox does not open web links: make it do so (Yes), go on (No), or end the program (Cancel).
Box firefoxDefaultBox();

// End the program? Only No keeps it running.
Box quitBox();

// The desktop has no tray: how the menu is reached instead.
Box noTrayBox();
