// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "text/Text.h"

// What stands here for the programs that a command line asks for under their Windows names.

struct Equivalent {
  std::string_view program;
  std::string_view package;              // what brings it, on Debian and its relatives
  std::string_view terminalOption = {};  // of a terminal: what goes in front of a program's words
};

// Whether the desktop's own program for a kind of document will do, and when it is looked at.
enum class Handler { None, First, Last };

struct EquivalentRow {
  TextView command;  // alone on its line or, where there is a handler, in front of one path
  Handler handler;
  std::string_view mimeType;             // of the documents that the handler is registered for
  std::span<const Equivalent> programs;  // the first one that is installed wins
};

std::span<const EquivalentRow> equivalentRows();

// The row of `command`; null when it stands for itself.
const EquivalentRow* equivalentRow(TextView command);

// The first program of the row that is in PATH; null when none is.
const Equivalent* installedEquivalent(const EquivalentRow& row);

// What could be installed: "a (paquet b) ou c (paquet d)".
Text missingText(const EquivalentRow& row);

// What starts a program in a terminal window, in front of the program's own words. Empty when no
// terminal is installed.
std::vector<std::string> terminalCommand();
