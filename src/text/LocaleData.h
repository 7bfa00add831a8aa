// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <ctime>
#include <string>

#include "text/Text.h"

// How numbers and dates are written for the user. It is handed to whoever needs it; the platform
// knows the desktop's own.
struct LocaleData {
  char16_t decimalSeparator;
  std::string dateFormat;       // in strftime's letters
  char16_t groupSeparator = 0;  // between groups of three digits; 0: none
  int decimals = 2;             // of a number for which nobody says how many

  bool operator==(const LocaleData&) const = default;
};

// dd/mm/yyyy, a decimal comma, a no-break space between groups: the command line, the tests, and a
// desktop without a locale.
LocaleData frenchLocale();

// The day of `time`, in local time. Empty when the calendar cannot express it.
Text dateText(std::time_t time, const LocaleData& locale);
