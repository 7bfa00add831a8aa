// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <optional>
#include <string>
#include <sys/stat.h>

#include "platform/FolderTree.h"
#include "platform/linux/FileDescriptor.h"
#include "platform/linux/TreeRoot.h"

// One end of a copy: a file in an open folder.
struct CopyPlace {
  FolderTree::Root::Folder folder;
  std::string name;

  // False with errno set. A link is followed unless `flags` say otherwise.
  bool status(struct stat& status, int flags = 0) const {
    return ::fstatat(folder->number(), name.c_str(), &status, flags) == 0;
  }
};

// The same file with the same content, as far as the system knows. `onStick`: see isStick.
bool isSameVersion(const struct stat& a, const struct stat& b, bool onStick);

// Opens a regular file for reading.
Failure openSource(const CopyPlace& place, FileDescriptor& file, struct stat& status);

// Where `place` is a link: the file that it ends at.
Failure followLink(CopyPlace& place);

// Whether what stands at the target is what was compared, or nothing. `oldMode` is set when
// something stands there.
Failure checkTarget(const CopyPlace& target, const std::optional<FileState>& expected,
                    std::optional<mode_t>& oldMode);

// Gives the file `from` in the target's folder the target's name; with `overNothing`, only where
// nothing stands. False with errno set.
bool renameTo(const CopyPlace& target, const std::string& from, bool overNothing);

// Gives the open file `target` the time and the permissions of the open file `source`. A file
// system that knows no permissions is no failure; then those of the replaced file are kept.
Failure carryOver(int source, const struct stat& status, std::optional<mode_t> oldMode, int target);
