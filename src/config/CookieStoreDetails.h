// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "text/LocaleData.h"
#include "text/Text.h"

// What tells one cookie store from another: its size, and the day and time at which the browser
// last wrote to it or to its log. "" when the store is gone.
Text cookieStoreDetails(const Text& path, const LocaleData& locale);
