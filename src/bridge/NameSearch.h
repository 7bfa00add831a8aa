// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string_view>

inline constexpr std::string_view kCookieName = "Tavr1CodeToExe";

// Where the command cookie's name begins in `bytes`, the first time at or after `from`; npos when
// it does not. As string_view::find, but near memory speed in any content.
std::size_t findCookieName(std::string_view bytes, std::size_t from);
