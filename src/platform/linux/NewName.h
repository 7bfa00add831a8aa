// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>

// Renames a file of `folder` (AT_FDCWD: both are paths), only where nothing stands. False with
// errno set.
bool renameOverNothing(int folder, const std::string& from, const std::string& to);
