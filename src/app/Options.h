// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "text/Text.h"

// What the program was asked on its command line.
struct Options {
  std::optional<Text> programFolder;  // --program-folder DIR
  bool testWindow = false;            // --test-window: the test window alone
  bool trace = false;                 // --trace: each trace line also goes to standard error
};

// `arguments` without the program's name, without the toolkit's own options, and without those that
// only ask for a text (textAskedFor). Nothing when they are not understood.
std::optional<Options> parseOptions(const std::vector<std::string>& arguments);

// How the program is called.
std::string usageText();

// What --help and --version print, whatever stands beside them; nothing when neither is there. It
// is asked before there is a display, which the toolkit's options need.
std::optional<std::string> textAskedFor(const std::vector<std::string>& arguments);
