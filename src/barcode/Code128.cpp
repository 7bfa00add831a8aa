// SPDX-License-Identifier: GPL-3.0-or-later
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
  return ((character >= 32) & (character <= 126)) | (character == kValue98);
}

bool beginsWithDigits(TextView text, std::size_t count) {
  return text.size() >= count && areDigits(text.substr(0, count));
}

// Set C is worth its switch for four digits at either end of the text, and for six within it.
bool isWorthSetC(TextView rest, bool atBegin) {
  const std::size_t needed = atBegin || rest.size() == 4 ? 4 : 6;
  return beginsWithDigits(rest, needed);
}

// Writes the symbol up to its check character, at most a character more than `text` has: a switch
// costs one and saves at least one. Gives its end.
char16_t* writeData(TextView text, char16_t* end) {
  bool inSetC = false;
  for (std::size_t i = 0; i < text.size();) {
    if (i > 0 && !inSetC && !isDigit(text[i])) {  // what most texts are made of
      *end++ = text[i++];
      continue;
    }
    const TextView rest = text.substr(i);
    if (!inSetC) {
      inSetC = isWorthSetC(rest, i == 0);
      if (i == 0) {
        *end++ = inSetC ? kStartC : kStartB;
      } else if (inSetC) {
        *end++ = kToSetC;
      }
    }
    if (inSetC && beginsWithDigits(rest, 2)) {
      *end++ = valueCharacter(10 * digitValue(rest[0]) + digitValue(rest[1]));
      i += 2;
      continue;
    }
    if (inSetC) {
      *end++ = kToSetB;
      inSetC = false;
    }
    *end++ = rest[0];
    ++i;
  }
  return end;
}

// Each character counts once more than the one in front of it, the first two once: sums of sums,
// from the end on.
int checkValue(TextView symbol) {
  std::int64_t behind = 0;
  std::int64_t sum = 0;
  for (std::size_t i = symbol.size() - 1; i > 0; --i) {
    behind += characterValue(symbol[i]);
    sum += behind;
  }
  return static_cast<int>((sum + characterValue(symbol[0])) % 103);
}

}  // namespace

Text ModcodeBarre::Code128(TextView text) {
  if (text.empty() || !holdsOfAll(text, isEncodable)) return {};
  Text result(text.size() + 3, kStop);
  char16_t* const begin = result.data();
  char16_t* end = writeData(text, begin);
  const int check = checkValue({begin, static_cast<std::size_t>(end - begin)});
  *end++ = valueCharacter(check);
  *end++ = kStop;
  result.resize(static_cast<std::size_t>(end - begin));
  return result;
}
