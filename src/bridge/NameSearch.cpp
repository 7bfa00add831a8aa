// SPDX-License-Identifier: GPL-3.0-or-later
#include "bridge/NameSearch.h"

#include <cstdint>

namespace {

constexpr std::size_t kBlock = 128;
constexpr std::size_t kRare = 12;  // the name's "x": rarer than its other letters

// True when the name may begin at one of the first kBlock bytes. A loop of fixed length without a
// branch becomes a few wide instructions, where a search for one letter stops at each.
bool mayBeginIn(const char* bytes) {
  std::uint8_t hits = 0;
  for (std::size_t i = 0; i < kBlock; ++i) {
    const auto first = static_cast<std::uint8_t>(bytes[i] == kCookieName[0]);
    const auto rare = static_cast<std::uint8_t>(bytes[i + kRare] == kCookieName[kRare]);
    hits = static_cast<std::uint8_t>(hits | (first & rare));
  }
  return hits != 0;
}

}  // namespace

std::size_t findCookieName(std::string_view bytes, std::size_t from) {
  constexpr std::size_t kWindow = kBlock + kCookieName.size() - 1;
  for (; from + kWindow <= bytes.size(); from += kBlock) {
    if (!mayBeginIn(bytes.data() + from)) continue;
    const std::size_t hit = bytes.substr(from, kWindow).find(kCookieName);
    if (hit != std::string_view::npos) return from + hit;
  }
  return bytes.find(kCookieName, from);
}
