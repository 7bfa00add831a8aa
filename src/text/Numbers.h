// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <optional>

#include "text/LocaleData.h"
#include "text/Text.h"

// Text to number by the user's locale, with blanks around it allowed. Nothing for what is no number
// or does not fit. Fractions are rounded to the nearest integer, halves to the even one.
std::optional<std::int16_t> toInt16(TextView text, const LocaleData& locale);
std::optional<std::int32_t> toInt32(TextView text, const LocaleData& locale);
std::optional<double> toDouble(TextView text, const LocaleData& locale);

// The 32-bit integer in `text`, 0 for anything that does not convert.
std::int32_t myClngCook(TextView text, const LocaleData& locale);

// In decimal, no leading blank.
Text numberText(std::int64_t number);

// The shortest text that reads back as `number`: "567", "567,5".
Text numberText(double number, const LocaleData& locale);

// `number` with the locale's decimals and its separator between groups of three digits: "1 024,00".
// Halves are rounded away from zero.
Text groupedNumberText(double number, const LocaleData& locale);

// The last nine characters of "000000000" followed by `number`: a shortcut's key.
Text nineDigits(std::int32_t number);
