// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <optional>

#include "text/Text.h"

// Where a browser's cookie store is looked for first.

// What the system tells about the user's folders.
struct UserFolders {
  std::optional<Text> appData = {};  // APPDATA, where the system has it
  Text home = {};
  Text xdgConfigHome = {};  // "" when it is not set
};

// Asks the environment.
UserFolders userFolders();

// Where the search for cookie stores begins: APPDATA; without it, the Firefox root whose profile
// was used last, else the first one that exists, else the home folder.
Text appDataFolder(const UserFolders& folders);

// Where Windows' own browsers keep their stores, as the file dialog has always begun; "" is the
// dialog's own folder. `browser` is 0 for Firefox, `label` the system's version, and `appData` what
// the paths begin with.
Text windowsStartFolder(std::int16_t browser, TextView label, const Text& appData);

// The folder in which the file dialog for a cookie store begins: windowsStartFolder on Windows and
// wherever APPDATA is set; elsewhere Firefox's profile used last, and Chrome's or Chromium's
// default profile, that is the first one that exists, else Chrome's.
Text cookieStartFolder(std::int16_t browser, TextView label, const UserFolders& folders);
