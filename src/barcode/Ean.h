// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "text/Text.h"

// The parts of an EAN, put behind each other in one text: it is made at every keystroke.

inline constexpr std::size_t kDigits13 = 12;  // without the check digit
inline constexpr std::size_t kDigits8 = 7;
inline constexpr std::size_t kAddOnDigits = 5;  // or two

// A symbol and its add-on, in characters, come to no more than this.
inline constexpr std::size_t kLongestEan = 25;

// As ModcodeBarre's functions of these names, behind `text`; nothing where they give "".
void appendEan13(Text& text, TextView digits);
void appendEan8(Text& text, TextView digits);
void appendEanAddOn(Text& text, TextView digits);
