// SPDX-License-Identifier: GPL-3.0-or-later
// A barcode's text: whatever is typed, the result is one that its font can show. An input is the
// type, the check box, how many characters of what follows are the add-on, then UTF-16, the lower
// byte first.
#include <algorithm>
#include <cstddef>

#include "Demand.h"
#include "barcode/ModcodeBarre.h"

namespace {

bool isBetween(char16_t character, int first, int last) {
  return character >= first && character <= last;
}

// Whether the font of `type` has a bar pattern for `character`.
bool hasGlyph(std::uint8_t type, char16_t character) {
  using namespace ModcodeBarre;
  switch (type) {
    case kCode39:
      return TextView(u" $%*+-./").find(character) != TextView::npos ||
             isBetween(character, u'0', u'9') || isBetween(character, u'A', u'Z');
    case kEan13:
    case kEan8:
      return TextView(u"*+[\\").find(character) != TextView::npos ||
             isBetween(character, u'0', u':') || isBetween(character, u'A', u'T') ||
             isBetween(character, u'a', u'j');
    case kInterleaved2of5: return isBetween(character, 33, 126) || isBetween(character, 195, 202);
    case kCode128: return isBetween(character, 32, 126) || isBetween(character, 195, 206);
    default: return false;
  }
}

Text readText(const std::uint8_t* data, std::size_t size) {
  Text text;
  for (std::size_t i = 0; i + 1 < size; i += 2) {
    text += static_cast<char16_t>(data[i] | data[i + 1] << 8);
  }
  return text;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size < 3) return 0;
  const auto type = static_cast<std::uint8_t>(data[0] % 8);
  const bool withCheck = data[1] % 2 != 0;
  const Text text = readText(data + 3, size - 3);
  const std::size_t addOnLength = std::min<std::size_t>(data[2], text.size());
  const TextView addOn = TextView(text).substr(0, addOnLength);
  const TextView source = TextView(text).substr(addOnLength);

  const Text result = ModcodeBarre::CodeBar(type, source, addOn, withCheck);
  demand(std::all_of(result.begin(), result.end(),
                     [type](char16_t character) { return hasGlyph(type, character); }),
         "the font has a glyph for each character");
  demand(!source.empty() || result.empty(), "an empty text has no barcode");
  demand(result.size() <= std::max<std::size_t>(source.size() + 4, 25),
         "the result is hardly longer than the text");
  Text again(data[1] % 64, u'x');
  ModcodeBarre::CodeBarInto(again, type, source, addOn, withCheck);
  demand(result == again, "the same text has the same barcode, whatever stood in its place");
  return 0;
}
