// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "text/Text.h"

// ModcodeBarre's encoders, each into a text that is given. What the text held is replaced, and the
// room that it has is used again: a symbol is made at every keystroke and for every line of a list.
// What cannot be encoded leaves "". The other arguments must not lie in `result`.

void encodeCode39(Text& result, TextView text);
void encodeInterleaved2of5(Text& result, TextView digits, bool withCheck);
void encodeCode128(Text& result, TextView text);

// As CodeBar has them: a short source or add-on counts as filled with zeros, what is too long for a
// source is its add-on.
void encodeEan13(Text& result, TextView source, TextView addOn);
void encodeEan8(Text& result, TextView source, TextView addOn);
