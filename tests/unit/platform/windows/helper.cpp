// SPDX-License-Identifier: GPL-3.0-or-later
// A program that the tests start. What it does hangs on its first argument:
//   --hold FOLDER   holds the instance lock until it is asked to end
//   --deaf FOLDER   holds it and cannot be asked
//   --ask           asks who holds it, again and again
// Anything else is written down: "started", beside the program, gets its arguments, and "how" the
// state of its window and its folder, one a line.
#include <string>
#include <windows.h>

#include "platform/Console.h"
#include "platform/Desktop.h"
#include "platform/Files.h"
#include "platform/System.h"
#include "text/Paths.h"
#include "text/Utf.h"

namespace {

Text beside(TextView name) { return folderOf(executablePath()) + u"\\" + Text(name); }

int hold(const std::string& folder, bool listens) {
  InstanceGuard guard;
  std::unique_ptr<TerminationRequests> requests;
  if (listens) requests = std::make_unique<TerminationRequests>();
  if (!guard.acquire(fromUtf8(folder))) return 1;
  replaceFile(beside(u"ready"), "");
  if (listens) {
    ::WaitForSingleObject(reinterpret_cast<HANDLE>(requests->eventsFd()), INFINITE);
  } else {
    ::Sleep(INFINITE);
  }
  return 0;
}

int writeDown(const std::vector<std::string>& arguments) {
  std::string lines;
  for (const std::string& argument : arguments) lines += argument + "\n";
  STARTUPINFOW start{};
  ::GetStartupInfoW(&start);
  const bool told = (start.dwFlags & STARTF_USESHOWWINDOW) != 0;
  const std::string shown = told ? std::to_string(start.wShowWindow) : "-";
  replaceFile(beside(u"how"), shown + "\n" + toUtf8Lossless(currentFolder()) + "\n");
  replaceFile(beside(u"started"), lines);
  return 0;
}

}  // namespace

int main(int count, char** arguments) {
  const std::vector<std::string> words = commandArguments(count, arguments);
  if (words.size() == 2 && words[0] == "--hold") return hold(words[1], true);
  if (words.size() == 2 && words[0] == "--deaf") return hold(words[1], false);
  while (words.size() == 1 && words[0] == "--ask") static_cast<void>(runningInstance());
  return writeDown(words);
}
