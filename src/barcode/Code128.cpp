// SPDX-License-Identifier: GPL-3.0-or-later
#include <algorithm>

#include "barcode/Digits.h"
#include "barcode/Encoders.h"
#include "barcode/ModcodeBarre.h"

namespace {

// A symbol is a row of values, of which set C takes 0 to 99 as pairs of digits.
constexpr unsigned kToSetC = 99;
constexpr unsigned kToSetB = 100;
constexpr unsigned kStartB = 104;
constexpr unsigned kStartC = 105;
constexpr unsigned kStop = 106;
constexpr unsigned kCharacters = 95;  // of ASCII, from the blank on, are the first values of set B
constexpr char16_t kValue98 = 198;    // the one other character that may stand in a text
constexpr unsigned kNoValue = 107;

char16_t valueCharacter(unsigned value) {
  return static_cast<char16_t>(value < kCharacters ? value + 32 : value + 100);
}

// In set B; kNoValue for what a text may not hold.
unsigned characterValue(char16_t character) {
  const unsigned value = static_cast<std::uint16_t>(character - u' ');
  if (value < kCharacters) return value;
  return character == kValue98 ? 98 : kNoValue;
}

// Set C is worth its switch for four digits at either end of the text, and for six within it.
bool isWorthSetC(TextView rest, bool atBegin) {
  const std::size_t needed = atBegin || rest.size() == 4 ? 4 : 6;
  return rest.size() >= needed && std::all_of(rest.begin(), rest.begin() + needed, isDigit);
}

// Writes the characters of a symbol and takes the sum that its check value is made from: each value
// counts once more than the one in front of it, the first two once.
class SymbolWriter {
 public:
  SymbolWriter(char16_t* begin, unsigned start) : end_(begin), sum_(start) {
    *end_++ = valueCharacter(start);
  }

  void put(unsigned value) {
    *end_++ = valueCharacter(value);
    sum_ += weight_++ * value;
  }

  // Gives the symbol's end.
  char16_t* finish() {
    put(static_cast<unsigned>(sum_ % 103));
    put(kStop);
    return end_;
  }

 private:
  char16_t* end_;
  std::uint64_t sum_;
  std::uint64_t weight_ = 1;
};

// Gives the end, and nothing where a character cannot be encoded.
char16_t* writeSymbol(TextView text, char16_t* begin) {
  bool inSetC = isWorthSetC(text, true);
  SymbolWriter symbol(begin, inSetC ? kStartC : kStartB);
  for (std::size_t i = 0; i < text.size();) {
    if (inSetC) {
      if (i + 1 < text.size() && isDigit(text[i]) && isDigit(text[i + 1])) {
        symbol.put(10 * digitValue(text[i]) + digitValue(text[i + 1]));
        i += 2;
        continue;
      }
      symbol.put(kToSetB);
      inSetC = false;
    } else if (isDigit(text[i]) && isWorthSetC(text.substr(i), false)) {
      symbol.put(kToSetC);
      inSetC = true;
      continue;
    }
    const unsigned value = characterValue(text[i++]);
    if (value == kNoValue) return nullptr;
    symbol.put(value);
  }
  return symbol.finish();
}

}  // namespace

void encodeCode128(Text& result, TextView text) {
  if (text.empty()) return result.clear();
  result.resize(text.size() + 3);  // a switch costs a character and saves at least one
  const char16_t* const end = writeSymbol(text, result.data());
  result.resize(end ? static_cast<std::size_t>(end - result.data()) : 0);
}

Text ModcodeBarre::Code128(TextView text) {
  Text result;
  encodeCode128(result, text);
  return result;
}
