// SPDX-License-Identifier: GPL-3.0-or-later
#include "barcode/Digits.h"
#include "barcode/ModcodeBarre.h"

namespace {

constexpr char16_t kStart = 201;
constexpr char16_t kStop = 202;

// The values 94 to 99 lie above what ASCII has room for.
char16_t pairCharacter(int value) {
  return static_cast<char16_t>(value < 94 ? value + 33 : value + 101);
}

}  // namespace

Text ModcodeBarre::Interleaved2of5(TextView digits, bool withCheck) {
  if (digits.empty() || !areDigits(digits)) return {};
  const std::size_t count = digits.size() + (withCheck ? 1 : 0);
  Text result((count + 1) / 2 + 2, kStop);
  char16_t* end = result.data();
  *end++ = kStart;
  std::size_t i = count % 2;  // a zero in front makes the count even
  if (i == 1) *end++ = pairCharacter(digitValue(digits[0]));
  for (; i + 1 < digits.size(); i += 2) {
    *end++ = pairCharacter(10 * digitValue(digits[i]) + digitValue(digits[i + 1]));
  }
  if (withCheck) *end = pairCharacter(10 * digitValue(digits[i]) + checkDigit(digits));
  return result;
}
