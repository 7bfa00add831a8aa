// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <optional>

#include "platform/Questions.h"
#include "text/Text.h"

// Writes the page key into the first line of the page script res_css\js\rwCookies.js below the web
// application's root: var ps="<value>"; with the value unescaped, in the ANSI code page. The other
// lines stay as they are, each ended by CR LF. The script is replaced whole or left as it was.
//
// Result: the warning to show when it did not work, else nothing.
std::optional<Box> writePageKey(const Text& webApplicationRoot, const Text& value);
