// SPDX-License-Identifier: GPL-3.0-or-later
#include <array>

#include "barcode/Digits.h"
#include "barcode/ModcodeBarre.h"

namespace {

// A digit's three patterns: odd parity, even parity, and the mirrored one of the right half.
constexpr char16_t kSetA = u'A';
constexpr char16_t kSetB = u'K';
constexpr char16_t kSetC = u'a';

constexpr char16_t kCentreGuard = u'*';
constexpr char16_t kEndGuard = u'+';
constexpr char16_t kStartGuard8 = u':';  // EAN-13 has it in the glyph of its first digit
constexpr char16_t kAddOnStart = u'[';
constexpr char16_t kAddOnSeparator = u'\\';

// The sets of an EAN-13's digits 2 to 7, by the first digit.
constexpr std::array<std::string_view, 10> kParity13 = {"AAAAAA", "AABABB", "AABBAB", "AABBBA",
                                                        "ABAABB", "ABBAAB", "ABBBAA", "ABABAB",
                                                        "ABABBA", "ABBABA"};

// The sets of an add-on's digits: by the remainder of its value, and by its check value.
constexpr std::array<std::string_view, 4> kParity2 = {"AA", "AB", "BA", "BB"};
constexpr std::array<std::string_view, 10> kParity5 = {"BBAAA", "BABAA", "BAABA", "BAAAB", "ABBAA",
                                                       "AABBA", "AAABB", "ABABA", "ABAAB", "AABAB"};

char16_t inSet(char16_t set, char16_t digit) {
  return static_cast<char16_t>(set + digitValue(digit));
}

char16_t inParity(char parity, char16_t digit) {
  return inSet(parity == 'A' ? kSetA : kSetB, digit);
}

void appendInSet(Text& result, char16_t set, TextView digits) {
  for (const char16_t digit : digits) result += inSet(set, digit);
}

void appendCheckAndEnd(Text& result, TextView digits) {
  result += static_cast<char16_t>(kSetC + checkDigit(digits));
  result += kEndGuard;
}

std::string_view addOnParity(TextView digits) {
  if (digits.size() == 2) {
    const int value = 10 * digitValue(digits[0]) + digitValue(digits[1]);
    return kParity2[static_cast<std::size_t>(value % 4)];
  }
  const int odd = digitValue(digits[0]) + digitValue(digits[2]) + digitValue(digits[4]);
  const int even = digitValue(digits[1]) + digitValue(digits[3]);
  return kParity5[static_cast<std::size_t>((3 * odd + 9 * even) % 10)];
}

}  // namespace

Text ModcodeBarre::EAN13(TextView digits) {
  if (digits.size() != 12 || !areDigits(digits)) return {};
  const std::string_view parity = kParity13[static_cast<std::size_t>(digitValue(digits[0]))];
  Text result;
  result.reserve(15);
  result += digits[0];
  for (std::size_t i = 0; i < parity.size(); ++i) result += inParity(parity[i], digits[i + 1]);
  result += kCentreGuard;
  appendInSet(result, kSetC, digits.substr(7));
  appendCheckAndEnd(result, digits);
  return result;
}

Text ModcodeBarre::EAN8(TextView digits) {
  if (digits.size() != 7 || !areDigits(digits)) return {};
  Text result;
  result.reserve(11);
  result += kStartGuard8;
  appendInSet(result, kSetA, digits.substr(0, 4));
  result += kCentreGuard;
  appendInSet(result, kSetC, digits.substr(4));
  appendCheckAndEnd(result, digits);
  return result;
}

Text ModcodeBarre::EANAddOn(TextView digits) {
  if ((digits.size() != 2 && digits.size() != 5) || !areDigits(digits)) return {};
  const std::string_view parity = addOnParity(digits);
  Text result;
  result.reserve(2 * digits.size());
  result += kAddOnStart;
  for (std::size_t i = 0; i < parity.size(); ++i) {
    if (i > 0) result += kAddOnSeparator;
    result += inParity(parity[i], digits[i]);
  }
  return result;
}
