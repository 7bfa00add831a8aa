// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <ostream>
#include <string>
#include <vector>

#include "sync/Comparison.h"

// What the verbs about two folders have in common.

// Lets the work run through; traces to a stream.
class SteadyProgress : public SyncProgress {
 public:
  explicit SteadyProgress(std::ostream& err) : err_(err) {}

  bool listing(Side, const Text&, std::size_t) override { return true; }
  bool copying(std::size_t, std::uint64_t) override { return true; }
  void waiting() override {}
  void trace(const Text& line) override;

 private:
  std::ostream& err_;
};

struct FolderPair {
  Listing source;
  Listing backup;
  DifferenceTable table;

  // True when something on either side could not be told.
  bool isPartlyUnknown() const;
};

// Lists and compares two existing folders. False when one is missing or one is in the other; `err`
// has got a sentence then.
bool compareFolders(const std::string& source, const std::string& backup, const Text& pattern,
                    std::ostream& err, FolderPair& pair);

// One line: the action's code, then path, date and size on the source's and on the backup's side,
// separated by tabs. In paths, "\", tab and line breaks are written \\ \t \n \r.
void writeRow(std::ostream& out, const FolderPair& pair, const DifferenceRow& row);
