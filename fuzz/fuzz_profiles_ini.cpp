// SPDX-License-Identifier: GPL-3.0-or-later
// profiles.ini: any bytes are read without harm, and what they name are paths below the root or
// complete ones, each once, whatever the line ends.
#include <algorithm>
#include <cstddef>
#include <set>

#include "Demand.h"
#include "config/FirefoxProfiles.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view bytes(reinterpret_cast<const char*>(data), size);
  const std::vector<Text> folders = profileFolders(bytes, u"/r");
  const std::size_t lines = static_cast<std::size_t>(std::count(bytes.begin(), bytes.end(), '\n'));
  demand(folders.size() <= lines + 1, "a line names one folder at most");
  demand(std::set<Text>(folders.begin(), folders.end()).size() == folders.size(),
         "each folder is named once");
  for (const Text& folder : folders) {
    demand(folder.starts_with(u'/'), "a folder's path is complete");
    demand(folder.find(u'\0') == Text::npos, "a folder's path can be looked up");
  }

  std::string otherEnds;
  for (const char byte : bytes)
    otherEnds += byte == '\n' ? std::string("\r\n") : std::string(1, byte);
  demand(profileFolders(otherEnds, u"/r") == folders, "line ends make no difference");
  return 0;
}
