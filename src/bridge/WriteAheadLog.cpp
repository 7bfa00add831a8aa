// SPDX-License-Identifier: GPL-3.0-or-later
#include "bridge/WriteAheadLog.h"

#include <utility>
#include <vector>

#include "bridge/BigEndian.h"

namespace {

constexpr std::size_t kHeaderSize = 32;
constexpr std::size_t kFrameHeaderSize = 24;
constexpr std::uint32_t kMagic = 0x377F0682;  // its lowest bit tells the checksums' byte order
constexpr std::uint32_t kVersion = 3007000;

// The running checksum of the log, over pairs of 32-bit words in the byte order of the header.
class Checksum {
 public:
  explicit Checksum(bool bigEndianWords) : word_(bigEndianWords ? bigEndian32 : littleEndian32) {}

  void add(std::string_view bytes) {
    for (std::size_t at = 0; at + 8 <= bytes.size(); at += 8) {
      first_ += word_(bytes, at) + second_;
      second_ += word_(bytes, at + 4) + first_;
    }
  }

  bool equals(std::string_view stored, std::size_t at) const {
    return first_ == bigEndian32(stored, at) && second_ == bigEndian32(stored, at + 4);
  }

 private:
  std::uint32_t (*word_)(std::string_view, std::size_t);
  std::uint32_t first_ = 0;
  std::uint32_t second_ = 0;
};

// Reads at most `size` bytes; the result is shorter only at the end of the file.
Failure readUpTo(const SharedFile& file, std::uint64_t offset, std::size_t size,
                 std::string& bytes) {
  bytes.resize(size);
  std::size_t count = 0;
  Failure failure = file.readAt(offset, {bytes.data(), bytes.size()}, count);
  bytes.resize(failure ? 0 : count);
  return failure;
}

Checksum checksumAfterHeader(std::string_view header) {
  Checksum checksum((bigEndian32(header, 0) & 1u) != 0);
  checksum.add(header.substr(0, 24));
  return checksum;
}

bool isUsable(std::string_view header, std::uint32_t pageSize) {
  if (header.size() < kHeaderSize) return false;
  if ((bigEndian32(header, 0) & ~1u) != kMagic || bigEndian32(header, 4) != kVersion) return false;
  return bigEndian32(header, 8) == pageSize && checksumAfterHeader(header).equals(header, 24);
}

}  // namespace

Failure WriteAheadLog::index(const SharedFile& file, std::uint32_t pageSize) {
  *this = {};
  if (Failure failure = readUpTo(file, 0, kHeaderSize, header_)) return failure;
  nextFrameOffset_ = kHeaderSize;
  if (isUsable(header_, pageSize)) {
    salts_ = header_.substr(16, 8);
    if (Failure failure = indexFrames(file, pageSize)) return failure;
  }
  return readUpTo(file, nextFrameOffset_, kFrameHeaderSize, nextFrame_);
}

Failure WriteAheadLog::indexFrames(const SharedFile& file, std::uint32_t pageSize) {
  Checksum checksum = checksumAfterHeader(header_);
  const std::size_t frameSize = kFrameHeaderSize + pageSize;
  std::vector<std::pair<std::uint32_t, std::uint64_t>> uncommitted;
  std::string frame;
  for (std::uint64_t at = kHeaderSize;; at += frameSize) {
    if (Failure failure = readUpTo(file, at, frameSize, frame)) return failure;
    if (frame.size() < frameSize || frame.compare(8, 8, salts_) != 0) return {};
    checksum.add(std::string_view(frame).substr(0, 8));
    checksum.add(std::string_view(frame).substr(kFrameHeaderSize));
    const std::uint32_t page = bigEndian32(frame, 0);
    if (page == 0 || !checksum.equals(frame, 16)) return {};

    uncommitted.emplace_back(page, at + kFrameHeaderSize);
    const std::uint32_t pagesAfterCommit = bigEndian32(frame, 4);
    if (pagesAfterCommit == 0) continue;
    pageCount_ = pagesAfterCommit;
    for (const auto& [number, offset] : uncommitted) offsets_[number] = offset;
    uncommitted.clear();
    nextFrameOffset_ = at + frameSize;
  }
}

bool WriteAheadLog::wentBackSince(const WriteAheadLog& earlier) const {
  if (earlier.pageCount_ == 0) return false;
  if (salts_.empty()) return !header_.empty();
  return salts_ == earlier.salts_ && nextFrameOffset_ < earlier.nextFrameOffset_;
}

std::optional<std::uint64_t> WriteAheadLog::offsetOf(std::uint32_t page) const {
  const auto found = offsets_.find(page);
  if (found == offsets_.end()) return std::nullopt;
  return found->second;
}

bool WriteAheadLog::unchanged(const SharedFile& file) const {
  std::string header;
  std::string nextFrame;
  if (readUpTo(file, 0, kHeaderSize, header)) return false;
  if (readUpTo(file, nextFrameOffset_, kFrameHeaderSize, nextFrame)) return false;
  return header == header_ && nextFrame == nextFrame_;
}
