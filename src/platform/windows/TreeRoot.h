// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>

#include "platform/FolderTree.h"
#include "platform/windows/Handle.h"

// A folder that nobody can rename or replace as long as this is open, so that its path stays what
// it is.
struct OpenFolder {
  Handle handle;
  std::wstring path;
};

// What a FolderTree is here: an open folder, below which every other one is opened step by step,
// none of them through a link.
struct FolderTree::Root {
  using Folder = std::shared_ptr<const OpenFolder>;

  // The folder at `relative`; null with `error` set. With `create`, what is missing of it is made.
  Folder folder(NativeView relative, DWORD& error, bool create = false);

  Folder top;
  NativeName lastPath;  // files come folder by folder: the last one is kept open
  Folder last;
};

// `path` in two: the folder ("" at the top) and the name.
NativeView parentOf(NativeView path);
NativeView baseOf(NativeView path);
