// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/Failure.h"
#include "platform/Questions.h"

// Makes every folder of the path that does not exist yet, the outermost first. What stood in the
// way of the first one that could not be made is the failure.
Failure makeSubFolders(const Text& path);

// The same; a failure is shown in a box.
void CreerSousDossiers(const Text& path, Questions& questions);
