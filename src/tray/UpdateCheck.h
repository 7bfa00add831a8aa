// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <ctime>

#include "platform/Shell.h"
#include "text/LocaleData.h"

// The separate program `updater`, and the day on which it was last asked.

struct UpdateSurroundings {
  const Text& programFolder;   // holds LastDateCheckUpdate.txt
  const Text& executablePath;  // `updater` stands beside it
  int revision;                // the last of the program's three version numbers
  const LocaleData& locale;    // in whose short form the day may have been written by hand
  Shell& shell;
};

Text lastCheckPath(const Text& programFolder);

// What the day's file holds when the last check was at `now`.
std::string lastCheckBytes(std::time_t now);

// How the updater is started.
ShellRequest updaterRequest(const Text& executablePath, int revision);

// Notes the day and starts the updater; a missing updater fails silently. Without `force` it does
// so only when the last check is seven days ago or more. The failure: a file that holds no line or
// cannot be read or written, or a last day that is none (only looked at without `force`); nothing
// is started then.
Failure CheckForUpdate(bool force, std::time_t now, const UpdateSurroundings& surroundings);
