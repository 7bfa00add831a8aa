// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>

#include "text/Text.h"

// A value as it stands on a line of our files.

// Every CR and every LF turned into a blank: one value stays on one line.
std::string onOneLine(std::string bytes);

// A path or an address in the form of toStoredText, on one line.
std::string storedField(TextView text);
