// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "text/Text.h"

// Byte text is text in which each character stands for one byte, through the ANSI code page: what
// the browser's store and the shortcut table are read as. This module turns the UTF-8 in it into
// real text and back. On Windows too it does so with tables of our own, and not with the system's
// calls, so that both systems write the same bytes.
namespace EncodeDecodeUtf8 {

inline constexpr int kCodePageUtf8 = 65001;
inline constexpr int kCodePageAnsi = 0;
inline constexpr int kAskForCodePage = -1;  // the system's ANSI code page, asked for at the call

// The system's ANSI code page identifier (1252).
int GetACP();

// `bytes` up to the first zero byte, read in `codePage`: one of the three above, or GetACP's
// answer.
Text multiByteToText(std::string_view bytes, int codePage);

// `text` up to the first zero character, written in `codePage`.
std::string textToMultiByte(TextView text, int codePage);

// Byte text holding UTF-8 → the text. To be applied once: a second time garbles what is not ASCII.
Text decode(TextView byteText);

// Text → byte text holding its UTF-8.
Text encode(TextView text);

// Removes every U+0000.
void removeZeroCharacters(Text& text);

}  // namespace EncodeDecodeUtf8
