// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>

#include "platform/windows/Handle.h"

// What tells one version of a file from another, as far as the system knows.
struct FileVersion {
  DWORD volume = 0;
  std::uint64_t index = 0;
  std::uint64_t size = 0;
  std::int64_t modified = 0;  // in ticks, see FileTime.h

  bool operator==(const FileVersion&) const = default;
};

struct FileDetails {
  FileVersion version{};
  DWORD attributes = 0;

  bool isFolder() const { return (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0; }
};

// Nothing with the last error set.
std::optional<FileDetails> detailsOf(HANDLE file);

// Opens what stands at the path for a look at it; folders too. What a link names is what counts,
// unless `flags` hold FILE_FLAG_OPEN_REPARSE_POINT.
Handle openForALook(const std::wstring& path, DWORD flags = 0);

// True for a link (to a file, to a folder, a mounted volume), false for other reparse points, which
// are files and folders like others: those that a cloud service or a compression keeps.
bool isLink(HANDLE file);

// Where the chain of links at `path` ends; "" with the last error set when it ends nowhere.
std::wstring endOfLink(const std::wstring& path);

// Takes the file away, also a read-only one. False with the last error set.
bool removeFile(const std::wstring& path);

// Renames the file, written through to the disk; `flags` as for MoveFileExW. Who has just opened
// the file that is replaced, a browser or a virus scanner, soon lets go of it: that is waited for,
// with a call of `waiting` now and then. False with the last error set.
bool renamePatiently(
    const std::wstring& from, const std::wstring& to, DWORD flags,
    const std::function<void()>& waiting = [] {});

// The attributes that a file keeps when its content is replaced or copied.
DWORD lastingAttributes(DWORD attributes);
