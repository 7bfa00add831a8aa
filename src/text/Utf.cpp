// SPDX-License-Identifier: GPL-3.0-or-later
#include "text/Utf.h"

#include <cstdint>

namespace {

constexpr char16_t kReplacement = u'\uFFFD';

struct Decoded {
  char32_t codePoint;
  std::size_t length;  // bytes taken; of an ill-formed part, its maximal length
  bool valid;
};

// The second byte's range, by the first (Unicode 15, table 3-7).
struct SecondByte {
  std::uint8_t from;
  std::uint8_t to;
};

SecondByte secondByteAfter(std::uint8_t first) {
  switch (first) {
    case 0xE0: return {0xA0, 0xBF};
    case 0xED: return {0x80, 0x9F};
    case 0xF0: return {0x90, 0xBF};
    case 0xF4: return {0x80, 0x8F};
    default: return {0x80, 0xBF};
  }
}

std::size_t sequenceLength(std::uint8_t first) {
  if (first < 0x80) return 1;
  if (first >= 0xC2 && first <= 0xDF) return 2;
  if (first >= 0xE0 && first <= 0xEF) return 3;
  if (first >= 0xF0 && first <= 0xF4) return 4;
  return 0;
}

Decoded decodeAt(std::string_view bytes, std::size_t at) {
  const auto first = static_cast<std::uint8_t>(bytes[at]);
  const std::size_t length = sequenceLength(first);
  if (length == 0) return {kReplacement, 1, false};
  if (length == 1) return {first, 1, true};

  char32_t codePoint = first & (0xFFu >> (length + 1));
  SecondByte range = secondByteAfter(first);
  for (std::size_t i = 1; i < length; ++i) {
    if (at + i >= bytes.size()) return {kReplacement, i, false};
    const auto next = static_cast<std::uint8_t>(bytes[at + i]);
    if (next < range.from || next > range.to) return {kReplacement, i, false};
    codePoint = (codePoint << 6) | (next & 0x3Fu);
    range = {0x80, 0xBF};
  }
  return {codePoint, length, true};
}

void append(Text& text, char32_t codePoint) {
  if (codePoint < 0x10000) {
    text += static_cast<char16_t>(codePoint);
    return;
  }
  codePoint -= 0x10000;
  text += static_cast<char16_t>(0xD800 + (codePoint >> 10));
  text += static_cast<char16_t>(0xDC00 + (codePoint & 0x3FF));
}

void append(std::string& bytes, char32_t codePoint) {
  const auto put = [&bytes](char32_t value) { bytes += static_cast<char>(value); };
  if (codePoint < 0x80) {
    put(codePoint);
  } else if (codePoint < 0x800) {
    put(0xC0 | (codePoint >> 6));
    put(0x80 | (codePoint & 0x3F));
  } else if (codePoint < 0x10000) {
    put(0xE0 | (codePoint >> 12));
    put(0x80 | ((codePoint >> 6) & 0x3F));
    put(0x80 | (codePoint & 0x3F));
  } else {
    put(0xF0 | (codePoint >> 18));
    put(0x80 | ((codePoint >> 12) & 0x3F));
    put(0x80 | ((codePoint >> 6) & 0x3F));
    put(0x80 | (codePoint & 0x3F));
  }
}

bool isHighSurrogate(char16_t unit) { return unit >= 0xD800 && unit <= 0xDBFF; }
bool isLowSurrogate(char16_t unit) { return unit >= 0xDC00 && unit <= 0xDFFF; }
bool carriesByte(char16_t unit) { return unit >= 0xDC80 && unit <= 0xDCFF; }

enum class IllFormed { Replace, Carry };

void decode(Text& text, std::string_view bytes, IllFormed policy) {
  text.clear();
  text.reserve(bytes.size());
  for (std::size_t at = 0; at < bytes.size();) {
    const Decoded part = decodeAt(bytes, at);
    if (part.valid || policy == IllFormed::Replace) {
      append(text, part.codePoint);
    } else {
      for (std::size_t i = 0; i < part.length; ++i) {
        text += static_cast<char16_t>(0xDC00 + static_cast<std::uint8_t>(bytes[at + i]));
      }
    }
    at += part.length;
  }
}

Text decoded(std::string_view bytes, IllFormed policy) {
  Text text;
  decode(text, bytes, policy);
  return text;
}

void encode(std::string& bytes, TextView text, IllFormed policy) {
  bytes.clear();
  bytes.reserve(text.size());
  for (std::size_t i = 0; i < text.size(); ++i) {
    const char16_t unit = text[i];
    if (isHighSurrogate(unit) && i + 1 < text.size() && isLowSurrogate(text[i + 1])) {
      const char32_t high = static_cast<char32_t>(unit - 0xD800) << 10;
      append(bytes, 0x10000 + high + static_cast<char32_t>(text[++i] - 0xDC00));
    } else if (policy == IllFormed::Carry && carriesByte(unit)) {
      bytes += static_cast<char>(unit & 0xFF);
    } else if (isHighSurrogate(unit) || isLowSurrogate(unit)) {
      append(bytes, kReplacement);
    } else {
      append(bytes, unit);
    }
  }
}

std::string encoded(TextView text, IllFormed policy) {
  std::string bytes;
  encode(bytes, text, policy);
  return bytes;
}

}  // namespace

Text fromUtf8(std::string_view bytes) { return decoded(bytes, IllFormed::Replace); }

std::string toUtf8(TextView text) { return encoded(text, IllFormed::Replace); }

void fromUtf8Into(Text& result, std::string_view bytes) {
  decode(result, bytes, IllFormed::Replace);
}

void toUtf8Into(std::string& result, TextView text) { encode(result, text, IllFormed::Replace); }

bool isValidUtf8(std::string_view bytes) {
  for (std::size_t at = 0; at < bytes.size();) {
    const Decoded part = decodeAt(bytes, at);
    if (!part.valid) return false;
    at += part.length;
  }
  return true;
}

bool looksLikeUtf8(std::string_view bytes) {
  for (const char byte : bytes) {
    if (static_cast<std::uint8_t>(byte) >= 0x80) return isValidUtf8(bytes);
  }
  return false;
}

Text fromUtf8Lossless(std::string_view bytes) { return decoded(bytes, IllFormed::Carry); }

std::string toUtf8Lossless(TextView text) { return encoded(text, IllFormed::Carry); }
