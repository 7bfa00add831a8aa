// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <functional>
#include <vector>

// Up to this many files are flushed one by one; for more, the whole file system at once is quicker.
inline constexpr std::size_t kFewFiles = 4;

// Both bring what was written to the disk and give 0 or errno. That can take a stick many seconds,
// so a worker does it, and `waiting` is called meanwhile.
int flushFiles(const std::vector<int>& files, const std::function<void()>& waiting);

// The file systems on which the files or folders are.
int flushFileSystems(const std::vector<int>& files, const std::function<void()>& waiting);
