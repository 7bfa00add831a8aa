// SPDX-License-Identifier: GPL-3.0-or-later
#include "bridge/StoreImage.h"

#include <algorithm>
#include <bit>

#include "bridge/BigEndian.h"

namespace {

constexpr std::size_t kHeaderSize = 100;
constexpr std::string_view kMagic{"SQLite format 3\0", 16};
constexpr std::string_view kPayloadFractions{"\x40\x20\x20", 3};

Text logPath(const Text& storePath) { return storePath + u"-wal"; }

// The page size that a valid header gives, else 0 (SQLite file format, section 1.3).
std::uint32_t pageSizeOf(std::string_view header) {
  if (header.size() < kHeaderSize || !header.starts_with(kMagic)) return 0;
  if (header.substr(21, 3) != kPayloadFractions) return 0;
  const std::uint32_t stored = bigEndian16(header, 16);
  const std::uint32_t size = stored == 1 ? 65536 : stored;
  return size >= 512 && std::has_single_bit(size) ? size : 0;
}

}  // namespace

StoreStamp storeStamp(const Text& storePath) {
  return {fileStamp(storePath), fileStamp(logPath(storePath))};
}

Failure StoreImage::open(const Text& storePath) {
  *this = {};
  path_ = storePath;
  stamp_ = storeStamp(storePath);
  if (Failure failure = store_.open(storePath)) return failure;
  FileStamp opened;
  if (Failure failure = store_.stamp(opened)) return failure;
  size_ = opened.size;

  header_.resize(kHeaderSize);
  std::size_t count = 0;
  if (Failure failure = store_.readAt(0, {header_.data(), header_.size()}, count)) return failure;
  header_.resize(count);
  pageSize_ = pageSizeOf(header_);
  if (!isSqlite() || !stamp_.log) return {};

  // A log that went since the query shows in unchanged(); one that cannot be read hides commands.
  if (Failure failure = logFile_.open(logPath(storePath))) return failure;
  if (Failure failure = log_.index(logFile_, pageSize_)) return failure;
  if (log_.pageCount() != 0) size_ = std::uint64_t{log_.pageCount()} * pageSize_;
  return {};
}

Failure StoreImage::read(std::uint64_t offset, std::span<char> into) const {
  if (offset > size_ || into.size() > size_ - offset) return failures::pastEndOfFile();
  if (log_.pageCount() == 0) return readFromFiles(offset, into);

  while (!into.empty()) {
    const std::uint64_t inPage = offset % pageSize_;
    const std::size_t length = std::min<std::size_t>(into.size(), pageSize_ - inPage);
    if (Failure failure = readFromFiles(offset, into.first(length))) return failure;
    into = into.subspan(length);
    offset += length;
  }
  return {};
}

// Bytes of one page when there is a log, else any bytes of the store.
Failure StoreImage::readFromFiles(std::uint64_t offset, std::span<char> into) const {
  std::optional<std::uint64_t> inLog;
  if (log_.pageCount() != 0)
    inLog = log_.offsetOf(static_cast<std::uint32_t>(offset / pageSize_) + 1);
  std::size_t count = 0;
  Failure failure = inLog ? logFile_.readAt(*inLog + offset % pageSize_, into, count)
                          : store_.readAt(offset, into, count);
  if (failure) return failure;
  return count == into.size() ? Failure() : failures::pastEndOfFile();
}

bool StoreImage::unchanged() const {
  if (storeStamp(path_) != stamp_) return false;
  if (!store_.isOpen()) return true;
  std::string header(header_.size(), '\0');
  std::size_t count = 0;
  if (store_.readAt(0, {header.data(), header.size()}, count)) return false;
  if (count != header.size() || header != header_) return false;
  return !logFile_.isOpen() || log_.unchanged(logFile_);
}
