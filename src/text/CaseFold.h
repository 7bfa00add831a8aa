// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "text/Text.h"

// Lower case by Unicode's simple one-to-one mapping (UnicodeData.txt), the same in every locale.
Text toLower(TextView text);
