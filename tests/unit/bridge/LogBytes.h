// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

// A write-ahead log written by hand, after the SQLite file format, section 4.

inline void appendBigEndian(std::string& bytes, std::uint32_t number) {
  for (const int shift : {24, 16, 8, 0}) bytes += static_cast<char>((number >> shift) & 0xFFu);
}

class LogBytes {
 public:
  LogBytes(std::uint32_t pageSize, std::uint32_t salt, bool bigEndianChecksums = true)
      : salt_(salt), bigEndian_(bigEndianChecksums) {
    appendBigEndian(bytes_, bigEndian_ ? 0x377F0683u : 0x377F0682u);
    appendBigEndian(bytes_, 3007000);
    appendBigEndian(bytes_, pageSize);
    appendBigEndian(bytes_, 0);
    appendBigEndian(bytes_, salt_);
    appendBigEndian(bytes_, ~salt_);
    sum(bytes_);
    appendSums();
  }

  // A frame; `pagesAfterCommit` is not 0 for one that ends a transaction.
  LogBytes& frame(std::uint32_t page, std::string_view content, std::uint32_t pagesAfterCommit) {
    std::string head;
    appendBigEndian(head, page);
    appendBigEndian(head, pagesAfterCommit);
    sum(head);
    sum(content);
    bytes_ += head;
    appendBigEndian(bytes_, salt_);
    appendBigEndian(bytes_, ~salt_);
    appendSums();
    bytes_ += content;
    return *this;
  }

  const std::string& bytes() const { return bytes_; }

 private:
  void sum(std::string_view bytes) {
    for (std::size_t at = 0; at + 8 <= bytes.size(); at += 8) {
      first_ += word(bytes, at) + second_;
      second_ += word(bytes, at + 4) + first_;
    }
  }

  std::uint32_t word(std::string_view bytes, std::size_t at) const {
    std::uint32_t number = 0;
    for (std::size_t i = 0; i < 4; ++i) {
      number = (number << 8) | static_cast<std::uint8_t>(bytes[at + (bigEndian_ ? i : 3 - i)]);
    }
    return number;
  }

  void appendSums() {
    appendBigEndian(bytes_, first_);
    appendBigEndian(bytes_, second_);
  }

  std::string bytes_;
  std::uint32_t salt_;
  bool bigEndian_;
  std::uint32_t first_ = 0;
  std::uint32_t second_ = 0;
};

// The first bytes of an SQLite database, as far as they are looked at before its pages.
inline std::string sqliteHeader(std::uint32_t pageSize) {
  std::string header("SQLite format 3\0", 16);
  header += static_cast<char>((pageSize >> 8) & 0xFFu);
  header += pageSize == 65536 ? '\1' : static_cast<char>(pageSize & 0xFFu);
  header += std::string("\2\2\0\x40\x20\x20", 6);
  header.resize(100, '\0');
  return header;
}
