// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <algorithm>

#include "text/Text.h"

// The digits that the barcodes of this room are made of: "0" to "9" and no others of Unicode's.

inline bool isDigit(char16_t character) { return character >= u'0' && character <= u'9'; }

// True also for "".
inline bool areDigits(TextView text) { return std::all_of(text.begin(), text.end(), isDigit); }

inline int digitValue(char16_t digit) { return digit - u'0'; }

// The check digit that EAN and Interleaved 2 of 5 share: from the right, digits count three times
// and once in turn.
inline int checkDigit(TextView digits) {
  int sum = 0;
  int weight = 3;
  for (auto digit = digits.rbegin(); digit != digits.rend(); ++digit) {
    sum = (sum + weight * digitValue(*digit)) % 10;
    weight = 4 - weight;
  }
  return (10 - sum) % 10;
}
