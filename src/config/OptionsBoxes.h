// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/Failure.h"
#include "platform/Questions.h"

// The settings window's own boxes.

// The cookie store that was chosen cannot be read: change the settings (Yes) or end the program
// (No).
Box cookieStoreRejectedBox();

// The first shortcut is never deleted.
Box firstRowStaysBox();

// The session's start could not be changed.
Box autostartBox(const Failure& failure);
