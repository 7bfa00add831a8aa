// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <string_view>

// Numbers as SQLite stores them. The caller has checked that the bytes are there.

inline std::uint32_t bigEndian16(std::string_view bytes, std::size_t at) {
  return (static_cast<std::uint32_t>(static_cast<std::uint8_t>(bytes[at])) << 8) |
         static_cast<std::uint8_t>(bytes[at + 1]);
}

inline std::uint32_t bigEndian32(std::string_view bytes, std::size_t at) {
  return (bigEndian16(bytes, at) << 16) | bigEndian16(bytes, at + 2);
}

inline std::uint32_t littleEndian32(std::string_view bytes, std::size_t at) {
  const auto byte = [&](std::size_t i) -> std::uint32_t {
    return static_cast<std::uint8_t>(bytes[at + i]);
  };
  return byte(0) | (byte(1) << 8) | (byte(2) << 16) | (byte(3) << 24);
}
