// SPDX-License-Identifier: GPL-3.0-or-later
// What a desktop's files and a page's parameters are turned into: arguments of a program. Any bytes
// are read without harm, and a word that was quoted is one word again.
#include <cstddef>

#include "Demand.h"
#include "platform/linux/CommandWords.h"
#include "platform/linux/DesktopEntry.h"
#include "text/Utf.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string bytes(reinterpret_cast<const char*>(data), size);
  const auto entry = parseDesktopEntry(bytes, "/usr/share/applications/editor.desktop");
  if (entry) {
    const auto command = desktopEntryCommand(*entry, {"/home/a b.txt"});
    if (command) demand(!command->empty() && !command->front().empty(), "a command has a program");
  }

  const Text text = fromUtf8(bytes);
  splitCommandWords(text);
  if (text.empty()) return 0;
  demand(splitCommandWords(quoteWord(text)) == std::vector<Text>{text},
         "a quoted word is one word again");
  demand(!guardDash(text).starts_with(u'-'), "no file name reads as an option");
  return 0;
}
