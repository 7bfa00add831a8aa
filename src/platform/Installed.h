// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <optional>
#include <vector>

#include "text/Text.h"

// What the user's system has, for a diagnosis. Nothing where that cannot be told.

struct FoundProgram {
  Text program;  // what would be started; "" when there is none
  Text missing;  // what could be installed then
};

// What stands here for a command that opens documents: "notepad", "write".
std::optional<FoundProgram> programFor(TextView command);

// True when somebody shows tray icons now.
std::optional<bool> trayStands();

// Those of the font families that no installed font belongs to.
std::optional<std::vector<Text>> missingFonts(const std::vector<Text>& families);

// What the user does with the program's fonts so that every program has them: half a sentence.
Text fontsAdvice();
