// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>
#include <optional>

#include "platform/windows/FileDetails.h"
#include "platform/windows/TreeRoot.h"
#include "platform/windows/Wide.h"

// One end of a copy: a file in an open folder.
struct CopyPlace {
  FolderTree::Root::Folder folder;
  std::wstring name;

  std::wstring path() const { return below(folder->path, name); }
};

// True when a link stands at the place.
bool isLinkAt(const CopyPlace& place);

// Where `place` is a link: the file that it ends at.
Failure followLink(CopyPlace& place);

// Opens a regular file for reading.
Failure openSource(const CopyPlace& place, Handle& file, FileDetails& details);

// Whether what stands at the target is what was compared, or nothing. `attributes` are set when
// something stands there.
Failure checkTarget(const CopyPlace& target, const std::optional<FileState>& expected,
                    std::optional<DWORD>& attributes);

// Gives the open file `target` the time and the attributes of the source.
Failure carryOver(const FileDetails& source, HANDLE target);

// Gives the file at `from` the target's name. It replaces what is there when that has `attributes`,
// also a read-only file; without any, it goes only where nothing stands. `waiting` is called while
// another program has the file open that is there.
Failure renameTo(const CopyPlace& target, const std::wstring& from, std::optional<DWORD> attributes,
                 const std::function<void()>& waiting);
