// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/Console.h"

#include <algorithm>

std::vector<std::string> commandArguments(int count, char** arguments) {
  return {arguments + std::min(count, 1), arguments + count};
}

void joinConsole() {}

// Bytes are bytes here anyway.
ConsoleStreams::ConsoleStreams() { static_cast<void>(codePage_); }
ConsoleStreams::~ConsoleStreams() = default;
