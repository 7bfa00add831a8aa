// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <optional>

#include "text/LocaleData.h"
#include "text/Text.h"

// The interval, in milliseconds, between two looks at the cookie store, as the user may set it:
// from 600 to 5000, by steps of 100. All results lie in that range.

// What was typed, brought into the range. Nothing for what is no 16-bit number: the interval stays.
std::optional<std::int32_t> typedInterval(TextView text, const LocaleData& locale);

// A step with the spin buttons.
std::int32_t longerInterval(std::int32_t interval);
std::int32_t shorterInterval(std::int32_t interval);
