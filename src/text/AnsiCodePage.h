// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <optional>

#include "text/Text.h"

// The system's ANSI code page: Windows-1252. The five bytes that it leaves undefined (81, 8D, 8F,
// 90, 9D) stand for the code points of the same number, so that any bytes survive the round trip.

Text fromAnsi(std::string_view bytes);

// What the code page lacks becomes "?"; a surrogate pair becomes one.
std::string toAnsi(TextView text);

// As toAnsi, but nothing when the code page lacks a character of `text`.
std::optional<std::string> toAnsiExactly(TextView text);
