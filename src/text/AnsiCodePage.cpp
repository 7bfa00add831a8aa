// SPDX-License-Identifier: GPL-3.0-or-later
#include "text/AnsiCodePage.h"

#include <array>
#include <cstdint>

namespace {

// Bytes 80 to 9F of Windows-1252; every other byte is its own code point.
constexpr std::array<char16_t, 32> kUpperControls = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

std::optional<char> ansiByte(char16_t unit) {
  if (unit < 0x80 || (unit >= 0xA0 && unit <= 0xFF)) return static_cast<char>(unit);
  for (std::size_t i = 0; i < kUpperControls.size(); ++i) {
    if (kUpperControls[i] == unit) return static_cast<char>(0x80 + i);
  }
  return std::nullopt;
}

bool isHighSurrogate(char16_t unit) { return unit >= 0xD800 && unit <= 0xDBFF; }
bool isLowSurrogate(char16_t unit) { return unit >= 0xDC00 && unit <= 0xDFFF; }

}  // namespace

Text fromAnsi(std::string_view bytes) {
  Text text;
  text.reserve(bytes.size());
  for (const char c : bytes) {
    const auto byte = static_cast<std::uint8_t>(c);
    const bool mapped = byte >= 0x80 && byte <= 0x9F;
    text += mapped ? kUpperControls[byte - 0x80u] : static_cast<char16_t>(byte);
  }
  return text;
}

std::string toAnsi(TextView text) {
  std::string bytes;
  bytes.reserve(text.size());
  for (std::size_t i = 0; i < text.size(); ++i) {
    bytes += ansiByte(text[i]).value_or('?');
    const bool pair =
        isHighSurrogate(text[i]) && i + 1 < text.size() && isLowSurrogate(text[i + 1]);
    if (pair) ++i;
  }
  return bytes;
}

std::optional<std::string> toAnsiExactly(TextView text) {
  std::string bytes;
  bytes.reserve(text.size());
  for (const char16_t unit : text) {
    const std::optional<char> byte = ansiByte(unit);
    if (!byte) return std::nullopt;
    bytes += *byte;
  }
  return bytes;
}
