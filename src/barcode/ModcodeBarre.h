// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

#include "text/Text.h"

// Turns a text into the characters which, shown in the matching barcode font, draw its barcode. No
// bars are drawn here: each character of the result selects one glyph of the font by its code point
// (32 to 126 and 195 to 206, where Windows-1252 and Unicode agree).
//
// All are pure functions. What a symbology cannot encode gives "".
namespace ModcodeBarre {

// The values of CodeBar's type.
inline constexpr std::uint8_t kCode39 = 1;
inline constexpr std::uint8_t kEan13 = 2;
inline constexpr std::uint8_t kEan8 = 3;
inline constexpr std::uint8_t kInterleaved2of5 = 4;
inline constexpr std::uint8_t kCode128 = 5;

// The font string of `source` in the symbology `type`; "" for any other type.
//
// Both EAN types fill a short source with zeros in front. What is too long for them becomes the
// add-on (five digits at most) instead of `addOn`; an add-on too is filled or cut, to 2 or 5
// digits. A valid add-on is in the result even where the source in front of it cannot be encoded.
// `withCheck`, a check digit, is for Interleaved 2 of 5 alone; the others have theirs always or
// never.
Text CodeBar(std::uint8_t type, TextView source, TextView addOn, bool withCheck);

// CodeBar in the place of what `result` holds, for whoever makes many: a text that has had room for
// a symbol of this length allocates nothing. `source` and `addOn` must not lie in it.
void CodeBarInto(Text& result, std::uint8_t type, TextView source, TextView addOn, bool withCheck);

// ISO/IEC 16388: capitals, digits, space and $ % + - . / between start and stop; no check
// character.
Text Code39(TextView text);

// ISO/IEC 15420, font "Code EAN13". Exactly 12 and 7 digits, the check digit is appended; exactly 2
// or 5 digits for the add-on.
Text EAN13(TextView digits);
Text EAN8(TextView digits);
Text EANAddOn(TextView digits);

// ISO/IEC 16390: one digit or more, a zero put in front where the count with the check digit would
// be odd.
Text Interleaved2of5(TextView digits, bool withCheck);

// ISO/IEC 15417, the sets B and C: characters 32 to 126, and 198, which stands for the set's value
// 98.
Text Code128(TextView text);

}  // namespace ModcodeBarre
