// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <unordered_map>

#include "platform/Files.h"

// The pages that an SQLite write-ahead log puts over its database: those of its current generation,
// up to the last whole commit. Stale frames of earlier generations and a torn tail count as absent.
// (SQLite file format, section 4, "The Write-Ahead Log".)
class WriteAheadLog {
 public:
  // Reads the log from `file`, which stays the caller's. A log that is none, or whose page size is
  // another, is empty. A failure is one of reading.
  Failure index(const SharedFile& file, std::uint32_t pageSize);

  // The number of pages of the database after the last commit; 0 when the log holds none.
  std::uint32_t pageCount() const { return pageCount_; }

  // Where in the log file the newest committed content of a page lies.
  std::optional<std::uint64_t> offsetOf(std::uint32_t page) const;

  // True when the header and the frame slot behind the last commit still hold what index() saw: a
  // newer commit, or a new generation, shows in one of them.
  bool unchanged(const SharedFile& file) const;

  // True when this log, indexed later, lost commits that `earlier` showed: fewer whole ones in the
  // same generation, or a header that no longer reads. A log that was started afresh, emptied or
  // removed is none of these, since its pages are in the database then.
  bool wentBackSince(const WriteAheadLog& earlier) const;

 private:
  Failure indexFrames(const SharedFile& file, std::uint32_t pageSize);

  std::unordered_map<std::uint32_t, std::uint64_t> offsets_;
  std::uint32_t pageCount_ = 0;
  std::string header_;
  std::string salts_;  // of the current generation; empty when the header is none
  std::string
      nextFrame_;  // the header bytes in the slot behind the last commit, as far as there are
  std::uint64_t nextFrameOffset_ = 0;
};
