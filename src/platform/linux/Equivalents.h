// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "platform/Shell.h"

// What stands here for the programs that a command line asks for under their Windows names.

struct Equivalent {
  std::string_view program;
  std::string_view package;              // what brings it, on Debian and its relatives
  std::string_view terminalOption = {};  // of a terminal: what goes in front of a program's words
};

// Whether the desktop's own program for a kind of document will do, and when it is looked at.
// Alone: the desktop opens the path itself, without one the home folder.
enum class Handler { None, First, Last, Alone };

// No command line but the word processor that a letter is opened in.
inline constexpr TextView kWordBasic = u"word.basic";

struct EquivalentRow {
  TextView command;  // the first word of its line
  CommandKind kind;  // what stands here for a command of words stands for it alone on its line
  Handler handler;
  std::string_view mimeType;             // of the documents that the handler is registered for
  std::span<const Equivalent> programs;  // the first one that is installed wins
};

std::span<const EquivalentRow> equivalentRows();

// The row of `command`; null when it stands for itself.
const EquivalentRow* equivalentRow(TextView command);

// The first program of the row that is in PATH; null when none is.
const Equivalent* installedEquivalent(const EquivalentRow& row);

// What hands a document to the desktop.
inline constexpr Equivalent kDocumentOpener{"xdg-open", "xdg-utils"};

// What could be installed: "a (paquet b) ou c (paquet d)", five at most.
Text missingText(std::span<const Equivalent> programs);

// What starts a program in a terminal window, in front of the program's own words. Empty when no
// terminal is installed.
std::vector<std::string> terminalCommand();
