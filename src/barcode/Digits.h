// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

#include "text/Text.h"

// The digits that the barcodes of this room are made of: "0" to "9" and no others of Unicode's.

// More than 9 for every character that is no digit.
inline unsigned digitValue(char16_t character) {
  return static_cast<std::uint16_t>(character - u'0');
}

inline bool isDigit(char16_t character) { return digitValue(character) <= 9; }

// The check digit that EAN and Interleaved 2 of 5 share, from the sum in which, from the right,
// digits count three times and once in turn: what is missing to a multiple of ten.
inline unsigned checkDigit(std::uint64_t sum) { return static_cast<unsigned>(9 * sum % 10); }
