// SPDX-License-Identifier: GPL-3.0-or-later
#include <algorithm>
#include <array>

#include "barcode/Encoders.h"
#include "barcode/ModcodeBarre.h"

namespace {

constexpr TextView kCharacters = u"0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZ-. $/+%";
constexpr char16_t kStartAndStop = u'*';

// Which of the characters of ASCII are among them: each is asked for at every keystroke.
constexpr auto kEncodable = [] {
  std::array<bool, 128> encodable{};
  for (const char16_t character : kCharacters) encodable[character] = true;
  return encodable;
}();

bool isEncodable(char16_t character) {
  return character < kEncodable.size() && kEncodable[character];
}

}  // namespace

void encodeCode39(Text& result, TextView text) {
  result.clear();
  if (!std::all_of(text.begin(), text.end(), isEncodable)) return;
  result.reserve(text.size() + 2);
  result += kStartAndStop;
  result += text;
  result += kStartAndStop;
}

Text ModcodeBarre::Code39(TextView text) {
  Text result;
  encodeCode39(result, text);
  return result;
}
