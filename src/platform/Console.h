// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>
#include <vector>

// What a program for the command line needs from the system.

// The arguments of this process behind its own name, in UTF-8. Where the system hands main() what
// it can express in a code page, they are asked for anew.
std::vector<std::string> commandArguments(int count, char** arguments);

// Lets a program that has windows, and so no console of its own, write to the one that it was
// started from. Nothing happens where the standard streams lead somewhere already.
void joinConsole();

// As long as this stands, the standard streams carry bytes as they are, without a translation of
// line ends, and a console shows them as UTF-8. To be made before anything is read or written.
class ConsoleStreams {
 public:
  ConsoleStreams();
  // NOLINTNEXTLINE(performance-trivially-destructible): only where there is nothing to undo
  ~ConsoleStreams();
  ConsoleStreams(const ConsoleStreams&) = delete;
  ConsoleStreams& operator=(const ConsoleStreams&) = delete;

 private:
  unsigned codePage_ = 0;  // the console's before; 0: it was not changed
};
