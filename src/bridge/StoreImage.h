// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <optional>
#include <span>

#include "bridge/WriteAheadLog.h"
#include "platform/Files.h"

// The attributes of a store and of its write-ahead log, by one query each.
struct StoreStamp {
  std::optional<FileStamp> store;
  std::optional<FileStamp> log;

  bool operator==(const StoreStamp&) const = default;
};
StoreStamp storeStamp(const Text& storePath);

// The bytes of the browser's cookie store as a reader of the database would see them: the store
// file with its write-ahead log laid over it. It is an overlay, not a copy: nothing is kept in
// memory but where each page lies. A file that is no SQLite database is its own image, byte for
// byte.
//
// The browser goes on writing while the image is read. What was read is to be trusted only when
// unchanged() says so afterwards.
class StoreImage {
 public:
  Failure open(const Text& storePath);

  // Length in bytes.
  std::uint64_t size() const { return size_; }

  // True when the file begins with a valid SQLite header, whatever follows it.
  bool isSqlite() const { return pageSize_ != 0; }

  // In bytes; 0 when the file is no SQLite database.
  std::uint32_t pageSize() const { return pageSize_; }

  // Reads exactly `into.size()` bytes at `offset` (from 0); past the end is a failure.
  Failure read(std::uint64_t offset, std::span<char> into) const;

  const StoreStamp& stamp() const { return stamp_; }

  const WriteAheadLog& log() const { return log_; }

  // True while store and log are what they were when the image was opened.
  bool unchanged() const;

 private:
  Failure readFromFiles(std::uint64_t offset, std::span<char> into) const;

  Text path_;
  StoreStamp stamp_;
  SharedFile store_;
  SharedFile logFile_;
  WriteAheadLog log_;
  std::string header_;
  std::uint64_t size_ = 0;
  std::uint32_t pageSize_ = 0;
};
