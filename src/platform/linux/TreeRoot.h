// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>

#include "platform/FolderTree.h"
#include "platform/linux/FileDescriptor.h"

// What a FolderTree is here: an open folder, from which every other one is opened step by step, so
// that neither a link nor the length of a path can lead elsewhere.
struct FolderTree::Root {
  using Folder = std::shared_ptr<const FileDescriptor>;

  // The folder at `relative`; null with errno set. With `create`, what is missing of it is made.
  Folder folder(NativeView relative, bool create = false);

  FileDescriptor top;
  bool missing = false;     // when it was opened last
  bool madeFolder = false;  // whose entry in the folder above it may not be on the disk yet
  NativeName lastPath;      // files come folder by folder: the last one is kept open
  Folder last;
};

// `path` in two: the folder ("" at the top) and the name.
NativeView parentOf(NativeView path);
NativeView baseOf(NativeView path);
