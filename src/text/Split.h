// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <vector>

#include "text/Text.h"

// What joins the fields of a command and of a shortcut.
inline constexpr TextView kFieldSeparator = u"_|_";

// The pieces between all occurrences of `separator`, from left to right; "" gives one empty piece.
std::vector<Text> split(TextView text, TextView separator);
std::vector<std::string_view> split(std::string_view bytes, std::string_view separator);

Text replaceAll(Text text, char16_t from, char16_t to);

// Without the blanks (U+0020) at both ends.
TextView trim(TextView text);

// Without the blanks, tabs and carriage returns at both ends: a line, or a part of one, of a file
// that people write by hand.
TextView trimLine(TextView line);
std::string_view trimLine(std::string_view line);

// The lines of `bytes`, ended by LF or CR LF. The last one may lack its end.
std::vector<std::string_view> splitLines(std::string_view bytes);

// A line break of any kind (CR LF, LF, CR alone) becomes LF.
Text withPlainLineBreaks(TextView text);
