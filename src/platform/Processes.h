// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <vector>

#include "platform/Failure.h"

// Other processes, for whoever ends one and starts another.

// The name of the file that the process runs, without its folder; "" when it is gone or cannot be
// told.
Text executableName(int processId);

// Asks the process to end (see TerminationRequests); false when it cannot be asked.
bool askToEnd(int processId);

// Ends it, whatever it does.
void forceToEnd(int processId);

// True for a file that the system can start as a program.
bool isStartable(const Text& path);

// Starts a program from its argument list, the program first, so that it outlives this process.
Failure startDetached(const std::vector<Text>& arguments);
