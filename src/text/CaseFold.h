// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "text/Text.h"

// Lower case by Unicode's simple one-to-one mapping (UnicodeData.txt), the same in every locale.
Text toLower(TextView text);

// Lower case of the letters A to Z; every other byte stays: for names that are ASCII by their
// standard.
std::string toLowerAscii(std::string_view bytes);
