// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <unordered_map>
#include <vector>

#include "sync/Listing.h"

// From two listings to the table of differences: what is to be copied, and where to. It touches no
// file.

enum class SyncAction : std::int16_t {
  NewInSource = 0,  // source → backup
  SourceNewer = 1,  // source → backup, over an older file
  NewInBackup = 2,  // backup → source
  BackupNewer = 3,  // backup → source, over an older file
};

inline constexpr std::uint32_t kNoFile = UINT32_MAX;

struct DifferenceRow {
  SyncAction action = SyncAction::NewInSource;
  std::uint32_t source = kNoFile;  // the file's place in the source's listing
  std::uint32_t backup = kNoFile;  // and in the backup's

  bool operator==(const DifferenceRow&) const = default;
};

struct DifferenceTable {
  std::vector<DifferenceRow>
      rows;                  // the source's files in their order, then those of the backup alone
  std::size_t withheld = 0;  // files of one side about which the other one could not be asked
};

// More than this many seconds between two files make them different: some file systems keep times
// no better than to two.
inline constexpr std::uint64_t kSameTimeSeconds = 5;

// A file's partner is the one of exactly its path, else one that differs in capitals alone; no file
// is the partner of two. A file below or at what the other side could not read makes no row.
DifferenceTable compareListings(const Listing& source, const Listing& backup);

// How much is not known of two sides that were compared: the files that are withheld, and what
// could not be read on either side. Links to folders and what is no file do not count.
std::size_t notCompared(const Listing& source, const Listing& backup, const DifferenceTable& table);

// Empties the table.
void ViderGrille(DifferenceTable& table);

// A collection with keys: relative path → place in a listing. It keeps views of its keys.
using FileIndex = std::unordered_map<NativeView, std::uint32_t>;

// True when the collection holds the key.
bool CleExiste(NativeView key, const FileIndex& index);

// Puts an empty collection in the place of `index`.
void NouvelleCollection(FileIndex& index);
