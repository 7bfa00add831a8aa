// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

#include "text/Text.h"

// dd/mm/yyyy, in strftime's letters.
inline constexpr const char* kDayMonthYear = "%d/%m/%Y";

// The day that `text` names in `format` (UTF-8, with strftime's letters for day, month and year in
// digits), as a count of days since 1970. A year of two digits is one of 1930 to 2029. Nothing for
// what is no day of the calendar, or for a format that writes a date in another way.
std::optional<std::int64_t> dayNumber(TextView text, std::string_view format);
