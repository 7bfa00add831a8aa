// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>
#include <vector>
#include <windows.h>

// Brings what was written to the files to the disk; 0 or the first error. That can take a stick
// many seconds, so a worker does it, and `waiting` is called meanwhile. Each file is flushed by
// itself: a whole volume may be flushed by the administrator alone.
DWORD flushFiles(const std::vector<HANDLE>& files, const std::function<void()>& waiting);
