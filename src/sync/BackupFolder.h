// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "text/Text.h"

// Where the backup is.

// True when the path can be a backup folder: three characters or more, and the folder exists.
bool isBackupFolder(const Text& path);

// What the system tells about where sticks and the user's files are; each "" when it tells nothing.
struct DrivePlaces {
  Text homeDrive;    // HOMEDRIVE
  Text user;         // the user's name
  Text home;         // the user's home folder
  Text mountRoot{};  // what the system's paths begin with; for tests
};
DrivePlaces drivePlaces();

// The folder from which a user without a backup folder chooses one, with a separator at its end:
// the home drive; where there are no drives, the folder of the user's sticks, else the home folder.
// Never the top of all folders unless a home drive says so; "" when there is none of these.
Text homeDriveRoot(const DrivePlaces& places);
