// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>

// True when `path` now is a folder of ours that nobody else can enter: made with mode 0700, or
// standing, no link, owned by us, and closed to others.
bool makePrivateFolder(const std::string& path);
