// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "app/Companion.h"
#include "platform/Questions.h"

// The test window alone, on the table that the settings name: no tray, no watching, and beside a
// running instance too. Returns the exit status once the window is closed.
int runTestWindow(Companion& companion, Questions& questions);
