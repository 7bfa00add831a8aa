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
  Text result;
  result.reserve(digits.size() / 2 + 3);
  result += kStart;

  // Each second digit completes a pair. A zero in front makes their count even.
  int tens = 0;
  bool pairBegun = (digits.size() % 2 == 0) == withCheck;
  const auto append = [&](int digit) {
    if (pairBegun) result += pairCharacter(10 * tens + digit);
    tens = digit;
    pairBegun = !pairBegun;
  };
  for (const char16_t digit : digits) append(digitValue(digit));
  if (withCheck) append(checkDigit(digits));

  result += kStop;
  return result;
}
