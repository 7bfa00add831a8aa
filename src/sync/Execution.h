// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/Questions.h"
#include "sync/Comparison.h"

// Carrying out a table of differences.

struct NotCopied {
  std::size_t row = 0;
  Failure failure;
};

struct SyncReport {
  std::size_t copied = 0;
  std::vector<NotCopied> notCopied;
  bool shortcutsRestored = false;  // the live shortcut table holds something else than before
  bool stopped = false;  // the progress ended the work; what was copied until then is in place
};

// Copies each row's file in the direction of its action; a row with another action is passed over.
// Missing folders are made; `questions` shows a box for the first that cannot be, and for others
// that fail for another reason or on the other side. What cannot be copied is traced with its
// reason, and the rest goes on. First, what interrupted copies left on either side is taken away.
SyncReport executeRows(const Listing& source, const Listing& backup,
                       const std::vector<DifferenceRow>& rows, Questions& questions,
                       SyncProgress& progress);

// Takes away what interrupted copies left.
void removeLeftovers(const Listing& listing);
