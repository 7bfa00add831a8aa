// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

#include "text/Text.h"

// The digits that the barcodes of this room are made of: "0" to "9" and no others of Unicode's.

inline bool isDigit(char16_t character) { return character >= u'0' && character <= u'9'; }

// True where `holds` of every character, also of none. It looks at all of them: a processor takes
// many at a time, but not where it may stop in their midst.
template <typename Holds>
bool holdsOfAll(TextView text, Holds holds) {
  bool all = true;
  for (const char16_t character : text) all &= holds(character);
  return all;
}

// True also for "".
inline bool areDigits(TextView text) { return holdsOfAll(text, isDigit); }

inline int digitValue(char16_t digit) { return digit - u'0'; }

// The check digit that EAN and Interleaved 2 of 5 share: from the right, digits count three times
// and once in turn.
inline int checkDigit(TextView digits) {
  std::int64_t sum = 0;
  std::int64_t heavy = 0;  // those that count three times
  for (std::size_t i = digits.size(); i > 0; --i) {
    sum += digitValue(digits[i - 1]);
    if ((digits.size() - i) % 2 == 0) heavy += digitValue(digits[i - 1]);
  }
  return static_cast<int>((10 - (sum + 2 * heavy) % 10) % 10);
}
