// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "text/Text.h"

// UTF-8 and UTF-16 (Unicode 15, chapter 3.9 and 3.10).

// Never fails: each maximal ill-formed part of `bytes` becomes one U+FFFD.
Text fromUtf8(std::string_view bytes);

// Never fails: a surrogate without its partner becomes U+FFFD.
std::string toUtf8(TextView text);

// The same in the place of what `result` holds, whose room is used again.
void fromUtf8Into(Text& result, std::string_view bytes);
void toUtf8Into(std::string& result, TextView text);

// True when `bytes` are well-formed UTF-8 (also when empty).
bool isValidUtf8(std::string_view bytes);

// True when `bytes` are well-formed UTF-8 and at least one of them is outside ASCII: what is then
// almost surely meant as UTF-8, since no sensible text in a single-byte code page looks like it.
bool looksLikeUtf8(std::string_view bytes);

// As fromUtf8 and toUtf8, but without loss: a byte that is no part of well-formed UTF-8 becomes the
// lone surrogate U+DC80 … U+DCFF that carries it, and comes back as that byte.
Text fromUtf8Lossless(std::string_view bytes);
std::string toUtf8Lossless(TextView text);
