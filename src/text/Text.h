// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>
#include <string_view>

// The program's text: UTF-16. Bytes are std::string; only this room turns one into the other.
using Text = std::u16string;
using TextView = std::u16string_view;

inline constexpr TextView kCrLf = u"\r\n";
