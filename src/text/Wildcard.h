// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "text/Text.h"

// Whether a file's name is one that a pattern means: "*" stands for any characters or none, "?" for
// one; capitals and small letters are the same. A closing ".*" also takes names without an ending
// ("*.*": every name), and so does the pattern "" take every name.
bool matchesPattern(TextView name, TextView pattern);
