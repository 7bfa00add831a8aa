// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/Questions.h"
#include "platform/System.h"

// What the menu's commands ask and tell.

// Enter the registry editor? Only Yes does.
Box regEditBox();

// How the author is reached.
Box contactBox();

// Look for an update (Yes), see the page about it (No), or neither.
Box updateBox();

// The system's name, version and kernel.
Box systemVersionBox(const SystemDescription& system);
