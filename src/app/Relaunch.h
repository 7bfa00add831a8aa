// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/Shell.h"

// How the separate program `reload`, beside the executable, is asked to end the running instance
// and to start the program again: the executable's own name, a tab, and its path.
ShellRequest relaunchRequest(const Text& executablePath);
