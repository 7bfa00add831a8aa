// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>
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

  // True when something could not be read, or could not be asked about on the other side.
  bool isPartlyUnknown() const;
};

// What the two verbs say and do differently.
struct FolderVerb {
  std::string_view usage;

  // Takes the option at `at`, which it moves to the option's last word. False for one that the verb
  // does not know.
  std::function<bool(const std::vector<std::string>& arguments, std::size_t& at)> takeOption;

  // What is done with two folders that were compared. The exit status.
  std::function<int(const FolderPair& pair)> work;
};

// Runs a verb over the two existing folders that its arguments name. One that is missing or in the
// other is said to `err`, and the status is kFailed.
int runFolderVerb(const FolderVerb& verb, const std::vector<std::string>& arguments,
                  std::ostream& out, std::ostream& err);

// One line: the action's code, then path, date and size on the source's and on the backup's side,
// separated by tabs. In paths, "\", tab and line breaks are written \\ \t \n \r.
void writeRow(std::ostream& out, const FolderPair& pair, const DifferenceRow& row);
