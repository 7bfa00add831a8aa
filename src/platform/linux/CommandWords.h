// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <vector>

#include "text/Text.h"

// A parameter text and the arguments that it stands for, quoted as a shell would but without one:
// nothing in it is ever expanded.

// Blanks and tabs separate. '…' holds anything but '; in "…" a backslash guards " \ $ ` and stands
// for itself elsewhere; outside it guards any character. An unclosed quote runs to the end.
std::vector<Text> splitCommandWords(TextView text);

// `word` as it is written in a parameter text: bare when that is harmless, else in single quotes.
Text quoteWord(TextView word);

// A file name that begins with "-" is given as "./-…", so that no program takes it for an option.
Text guardDash(TextView fileName);
