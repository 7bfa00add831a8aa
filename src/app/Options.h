// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "text/Text.h"

// What the program was asked on its command line.
struct Options {
  std::optional<Text> programFolder;  // --program-folder DIR
  bool trace = false;                 // --trace: each trace line also goes to standard error
  bool version = false;
  bool help = false;
};

// `arguments` without the program's name. Nothing when they are not understood.
std::optional<Options> parseOptions(const std::vector<std::string>& arguments);

// The text of --help.
std::string usageText();
