// SPDX-License-Identifier: GPL-3.0-or-later
#include <algorithm>

#include "barcode/Digits.h"
#include "barcode/ModcodeBarre.h"

namespace {

constexpr char16_t kToSetC = 199;
constexpr char16_t kToSetB = 200;
constexpr char16_t kStartB = 204;
constexpr char16_t kStartC = 205;
constexpr char16_t kStop = 206;
constexpr char16_t kValue98 = 198;  // the one character above ASCII that may stand in a text

// The values 95 to 106 lie above what ASCII has room for.
char16_t valueCharacter(int value) {
  return static_cast<char16_t>(value < 95 ? value + 32 : value + 100);
}

int characterValue(char16_t character) {
  return character < 127 ? character - 32 : character - 100;
}

bool isEncodable(char16_t character) {
  return (character >= 32 && character <= 126) || character == kValue98;
}

bool beginsWithDigits(TextView text, std::size_t count) {
  return text.size() >= count && areDigits(text.substr(0, count));
}

// Set C is worth its switch for four digits at either end of the text, and for six within it.
bool isWorthSetC(TextView rest, bool atBegin) {
  const std::size_t needed = atBegin || rest.size() == 4 ? 4 : 6;
  return beginsWithDigits(rest, needed);
}

// The symbol up to its check character.
Text dataCharacters(TextView text) {
  Text result;
  result.reserve(text.size() + 3);  // a switch costs one and saves at least one
  bool inSetC = false;
  for (std::size_t i = 0; i < text.size();) {
    const TextView rest = text.substr(i);
    if (!inSetC) {
      inSetC = isWorthSetC(rest, i == 0);
      if (i == 0) {
        result += inSetC ? kStartC : kStartB;
      } else if (inSetC) {
        result += kToSetC;
      }
    }
    if (inSetC && beginsWithDigits(rest, 2)) {
      result += valueCharacter(10 * digitValue(rest[0]) + digitValue(rest[1]));
      i += 2;
      continue;
    }
    if (inSetC) {
      result += kToSetB;
      inSetC = false;
    }
    result += rest[0];
    ++i;
  }
  return result;
}

int checkValue(TextView symbol) {
  std::int64_t sum = characterValue(symbol[0]);
  std::int64_t weight = 1;
  for (const char16_t character : symbol.substr(1)) {
    sum = (sum + weight * characterValue(character)) % 103;
    ++weight;
  }
  return static_cast<int>(sum);
}

}  // namespace

Text ModcodeBarre::Code128(TextView text) {
  if (text.empty() || !std::all_of(text.begin(), text.end(), isEncodable)) return {};
  Text result = dataCharacters(text);
  result += valueCharacter(checkValue(result));
  result += kStop;
  return result;
}
