// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>

#include "text/LocaleData.h"

// What the system knows of the locale of this name; LOCALE_NAME_USER_DEFAULT is the user's own,
// with what the user has changed in it. What it does not know is as in French.
LocaleData localeData(const wchar_t* name);

// A picture of a date as Windows has it ("dd/MM/yyyy") in strftime's letters.
std::string dateFormatOf(std::wstring_view picture);
