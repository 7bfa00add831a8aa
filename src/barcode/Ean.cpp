// SPDX-License-Identifier: GPL-3.0-or-later
#include "barcode/Ean.h"

#include <array>

#include "barcode/Digits.h"
#include "barcode/ModcodeBarre.h"

namespace {

// The symbols of nothing but zeros. A digit's character in each of its sets is so far behind that
// of the zero as its value says: "A" is the zero in odd parity, "K" in even parity, "a" in the
// right half. ":", "*" and "+" are guards (EAN-13 has the first one in the glyph of its first
// digit), "[" and "\\" the begin and the separators of an add-on.

// By the first digit.
constexpr std::array<TextView, 10> kZeros13 = {
    u"0AAAAAA*aaaaaa+", u"0AAKAKK*aaaaaa+", u"0AAKKAK*aaaaaa+", u"0AAKKKA*aaaaaa+",
    u"0AKAAKK*aaaaaa+", u"0AKKAAK*aaaaaa+", u"0AKKKAA*aaaaaa+", u"0AKAKAK*aaaaaa+",
    u"0AKAKKA*aaaaaa+", u"0AKKAKA*aaaaaa+"};

constexpr TextView kZeros8 = u":AAAA*aaaa+";

// By the remainder of the add-on's value, and by its check value.
constexpr std::array<TextView, 4> kZeros2 = {u"[A\\A", u"[A\\K", u"[K\\A", u"[K\\K"};
constexpr std::array<TextView, 10> kZeros5 = {
    u"[K\\K\\A\\A\\A", u"[K\\A\\K\\A\\A", u"[K\\A\\A\\K\\A", u"[K\\A\\A\\A\\K", u"[A\\K\\K\\A\\A",
    u"[A\\A\\K\\K\\A", u"[A\\A\\A\\K\\K", u"[A\\K\\A\\K\\A", u"[A\\K\\A\\A\\K", u"[A\\A\\K\\A\\K"};

void addDigit(char16_t& zero, char16_t digit) {
  zero = static_cast<char16_t>(zero + digitValue(digit));
}

void addCheckDigit(char16_t& zero, TextView digits) {
  zero = static_cast<char16_t>(zero + checkDigit(digits));
}

// Gives the appended characters.
char16_t* append(Text& text, TextView zeros) {
  text += zeros;
  return text.data() + text.size() - zeros.size();
}

TextView addOnZeros(TextView digits) {
  if (digits.size() == 2) {
    const int value = 10 * digitValue(digits[0]) + digitValue(digits[1]);
    return kZeros2[static_cast<std::size_t>(value % 4)];
  }
  const int odd = digitValue(digits[0]) + digitValue(digits[2]) + digitValue(digits[4]);
  const int even = digitValue(digits[1]) + digitValue(digits[3]);
  return kZeros5[static_cast<std::size_t>((3 * odd + 9 * even) % 10)];
}

}  // namespace

void appendEan13(Text& text, TextView digits) {
  if (digits.size() != kDigits13 || !areDigits(digits)) return;
  char16_t* symbol = append(text, kZeros13[static_cast<std::size_t>(digitValue(digits[0]))]);
  constexpr std::size_t kLeft = 7;  // those in front of the centre guard
  for (std::size_t i = 0; i < kLeft; ++i) addDigit(symbol[i], digits[i]);
  for (std::size_t i = kLeft; i < kDigits13; ++i) addDigit(symbol[i + 1], digits[i]);
  addCheckDigit(symbol[kDigits13 + 1], digits);
}

void appendEan8(Text& text, TextView digits) {
  if (digits.size() != kDigits8 || !areDigits(digits)) return;
  char16_t* symbol = append(text, kZeros8);
  constexpr std::size_t kLeft = 4;
  for (std::size_t i = 0; i < kLeft; ++i) addDigit(symbol[i + 1], digits[i]);
  for (std::size_t i = kLeft; i < kDigits8; ++i) addDigit(symbol[i + 2], digits[i]);
  addCheckDigit(symbol[kDigits8 + 2], digits);
}

void appendEanAddOn(Text& text, TextView digits) {
  if ((digits.size() != 2 && digits.size() != kAddOnDigits) || !areDigits(digits)) return;
  char16_t* symbol = append(text, addOnZeros(digits));
  for (std::size_t i = 0; i < digits.size(); ++i) addDigit(symbol[2 * i + 1], digits[i]);
}

Text ModcodeBarre::EAN13(TextView digits) {
  Text text;
  appendEan13(text, digits);
  return text;
}

Text ModcodeBarre::EAN8(TextView digits) {
  Text text;
  appendEan8(text, digits);
  return text;
}

Text ModcodeBarre::EANAddOn(TextView digits) {
  Text text;
  appendEanAddOn(text, digits);
  return text;
}
