// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/Console.h"

#include <windows.h>

#include <cstdio>
#include <fcntl.h>
#include <io.h>
#include <memory>
#include <shellapi.h>

#include "platform/windows/Wide.h"
#include "text/Utf.h"

std::vector<std::string> commandArguments(int /*count*/, char** /*arguments*/) {
  int found = 0;
  const std::unique_ptr<wchar_t*, decltype(&::LocalFree)> words(
      ::CommandLineToArgvW(::GetCommandLineW(), &found), &::LocalFree);
  std::vector<std::string> arguments;
  for (int i = 1; i < found; ++i) {
    arguments.push_back(toUtf8Lossless(fromWide(words.get()[i])));
  }
  return arguments;
}

void joinConsole() {
  // What was redirected is there already; of a console only its owner's own streams are.
  if (::GetStdHandle(STD_OUTPUT_HANDLE) || !::AttachConsole(ATTACH_PARENT_PROCESS)) return;
  std::freopen("CONOUT$", "w", stdout);
  std::freopen("CONOUT$", "w", stderr);
}

ConsoleStreams::ConsoleStreams() {
  for (const int file : {0, 1, 2}) ::_setmode(file, _O_BINARY);
  const unsigned before = ::GetConsoleOutputCP();
  if (before != 0 && ::SetConsoleOutputCP(CP_UTF8)) codePage_ = before;
}

ConsoleStreams::~ConsoleStreams() {
  if (codePage_ != 0) ::SetConsoleOutputCP(codePage_);
}
