// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <vector>

#include "platform/FolderTree.h"
#include "sync/SyncProgress.h"

// One side of a synchronisation as it was found: its files, and what could not be told. What could
// not be read is never the same as missing.

struct ListedFile {
  FileState state;
  std::uint64_t nameAt = 0;  // where its relative path begins in Listing::names
  std::uint32_t nameLength = 0;
};

enum class ObstacleKind { Unreadable, FolderLink, Special };

// Something that stands there and is not compared: a file, or a folder and all that is below it.
struct Obstacle {
  NativeName path;  // relative; "" is the root itself
  ObstacleKind kind = ObstacleKind::Unreadable;
  Failure failure{};  // of an Unreadable
};

struct Listing {
  Text root;                     // as it was given
  bool rootMissing = false;      // there is no such folder
  std::uint64_t fileSystem = 0;  // on which the root was; 0: nobody knows
  bool stopped = false;          // the progress ended the work: what follows is not all
  NativeName names;              // all relative paths, one behind the other
  std::vector<ListedFile> files;
  std::vector<Obstacle> obstacles;
  std::vector<NativeName> leftovers;  // hidden files of copies that were interrupted

  NativeView path(std::size_t file) const {
    return NativeView(names).substr(files[file].nameAt, files[file].nameLength);
  }
  void add(NativeView path, const FileState& state);
};

// Empties the listing.
void ViderListe(Listing& listing);

// Lists the files whose names match `pattern` in `root` and all its sub-folders, a folder's files
// before those of its sub-folders, each folder sorted by name. Files whose names begin with a dot
// are left out. Links to folders are not followed.
Listing listFolder(const Text& root, const Text& pattern, Side side, SyncProgress& progress);
