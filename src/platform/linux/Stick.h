// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string_view>

// Whether the open file or folder is on a disk of a format that sticks are sold in: the system
// makes up its permissions, and numbers its files anew whenever one has fallen out of memory.
bool isStick(int file);

// False for a name that such a disk keeps without its last dot, so that it is another name.
bool isTakenBySticks(std::string_view name);
