// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>

#include "platform/Failure.h"
#include "text/Text.h"

// What one attribute query tells of a file. Two equal stamps: as far as the system knows, the file
// is the same and unchanged. Times are nanoseconds since 1970.
struct FileStamp {
  std::uint64_t size = 0;
  std::uint64_t inode = 0;
  std::int64_t modified = 0;
  std::int64_t changed = 0;

  bool operator==(const FileStamp&) const = default;
};

// One attribute query. Nothing when there is no such file.
std::optional<FileStamp> fileStamp(const Text& path);

// A regular file opened for reading only, shared with whoever writes it: it takes no lock and
// respects none. Anything but a regular file is refused (a pipe would block).
class SharedFile {
 public:
  SharedFile() = default;
  ~SharedFile();
  SharedFile(SharedFile&& other) noexcept;
  SharedFile& operator=(SharedFile&& other) noexcept;

  Failure open(const Text& path);
  bool isOpen() const { return handle_ >= 0; }
  Failure stamp(FileStamp& stamp) const;

  // Reads up to `into.size()` bytes at `offset` (from 0); `count` is less only at the file's end.
  Failure readAt(std::uint64_t offset, std::span<char> into, std::size_t& count) const;

 private:
  std::intptr_t handle_ = -1;
};

// True when the trimmed path names a regular file that opens for reading. Never reports an error.
bool FileExists(const Text& path);

// True when anything stands at the path: the plain directory look-up.
bool somethingAt(const Text& path);

// The whole file. `bytes` is set only on success.
Failure readFile(const Text& path, std::string& bytes);

// Puts `bytes` at `path` so that, whatever happens, the old file or the new one stands there whole:
// temporary file beside it, flush, rename. A symbolic link stays one: its target is replaced.
// The old file's mode is kept.
Failure replaceFile(const Text& path, std::string_view bytes);

// Copies a file's bytes to a place where nothing stands yet (replaceFile's promise holds).
Failure copyFile(const Text& from, const Text& to);
