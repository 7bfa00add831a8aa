// SPDX-License-Identifier: GPL-3.0-or-later
#include <algorithm>

#include "barcode/ModcodeBarre.h"

namespace {

constexpr TextView kCharacters = u"0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZ-. $/+%";
constexpr char16_t kStartAndStop = u'*';

bool isEncodable(char16_t character) { return kCharacters.find(character) != TextView::npos; }

}  // namespace

Text ModcodeBarre::Code39(TextView text) {
  if (!std::all_of(text.begin(), text.end(), isEncodable)) return {};
  Text result;
  result.reserve(text.size() + 2);
  result += kStartAndStop;
  result += text;
  result += kStartAndStop;
  return result;
}
