// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/Files.h"
#include "sync/Execution.h"

// What stands behind the synchronisation window: the roots and listings of the last comparison, its
// table, and whether it was the first.
class FolderSync {
 public:
  enum class Outcome {
    Identical,  // nothing is to be copied
    Different,  // the table holds rows
    Unknown,    // it holds none, but not everything could be compared
    Stopped,    // the progress ended the work: the table is empty
    Refused,    // the user's files are nowhere, or the backup overlaps them: a box told so
  };

  FolderSync(Questions& questions, SyncProgress& progress)
      : questions_(questions), progress_(progress) {}

  // Puts the live shortcut table among the user's files, lists both sides and compares them.
  // `webRoot` ends with a separator, and is "" when nobody knows it; `backupPath` is what the user
  // chose; "" and "*.*" as `pattern` mean every file.
  Outcome compare(const Text& webRoot, const Text& backupPath, const Text& pattern);

  // Carries out the table and puts the shortcut table back in its live place, unless the live one
  // changed since the comparison or could not be put among the user's files in it. The next
  // comparison is no longer the first. To be followed by another `compare`.
  SyncReport synchronise();

  // The window closes: the shortcut table among the user's files goes, the live one stays. Where
  // the live one is not seen to stand, the other may be the last, and stays too.
  static void removeTravellingTable(const Text& webRoot);

  bool isFirstComparison() const { return firstComparison_; }
  const Listing& source() const { return source_; }
  const Listing& backup() const { return backup_; }
  const DifferenceTable& table() const { return table_; }

  // How much the last comparison had to leave out.
  std::size_t notCompared() const { return ::notCompared(source_, backup_, table_); }

 private:
  // False, traced and told in `box` (when given), when the table could not be copied.
  bool copyTable(const Text& from, const Text& to, const Box* box);
  Listing LancerLaRecherche_FSO(std::int16_t id, const Text& Filtre);

  Questions& questions_;
  SyncProgress& progress_;
  Text webRoot_;
  Text backupRoot_;
  std::optional<FileStamp> liveTable_;  // as it was compared
  bool liveTravels_ = false;            // it was put among the user's files
  Listing source_;
  Listing backup_;
  DifferenceTable table_;
  bool firstComparison_ = true;
};
