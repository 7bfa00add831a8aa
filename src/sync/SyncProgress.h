// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

#include "text/Text.h"

enum class Side { Source, Backup };

// Where long work tells how far it is, and yields: a window keeps itself alive in these calls, the
// command line needs none of them. Those that answer say whether to go on.
class SyncProgress {
 public:
  virtual ~SyncProgress() = default;

  // While a side is listed: the folder that is read now (its full path) and the files found so far.
  virtual bool listing(Side side, const Text& folder, std::size_t files) = 0;

  // While the rows are carried out: the row (from 0), and how many bytes of its file are copied.
  // Every row begins with one call of no bytes, also one that cannot be copied.
  virtual bool copying(std::size_t row, std::uint64_t bytes) = 0;

  // While what was written goes to the disk.
  virtual void waiting() = 0;

  // One line about something that was passed over or could not be copied.
  virtual void trace(const Text& line) = 0;
};
