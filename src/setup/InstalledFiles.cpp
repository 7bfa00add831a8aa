// SPDX-License-Identifier: GPL-3.0-or-later
#include "setup/InstalledFiles.h"

#include <algorithm>

#include "text/Split.h"

namespace {

constexpr std::size_t kDigest = 64;
constexpr std::string_view kGap = "  ";
constexpr std::string_view kComment =
    "# Ce que Tavrollo a installé ici en dernier : il reconnaît ainsi ce que vous avez changé.\n";

bool isDigest(std::string_view text) {
  return text.size() == kDigest && std::all_of(text.begin(), text.end(), [](char c) {
           return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'f');
         });
}

}  // namespace

std::string installedFilesText(const InstalledFiles& files) {
  std::string text(kComment);
  for (const auto& [path, digest] : files) text.append(digest).append(kGap).append(path) += '\n';
  return text;
}

InstalledFiles parseInstalledFiles(std::string_view text) {
  InstalledFiles files;
  for (std::string_view line : split(text, "\n")) {
    if (line.ends_with('\r')) line.remove_suffix(1);
    const std::size_t begin = kDigest + kGap.size();
    if (line.size() <= begin || line.substr(kDigest, kGap.size()) != kGap) continue;
    if (isDigest(line.substr(0, kDigest)))
      files[std::string(line.substr(begin))] = line.substr(0, kDigest);
  }
  return files;
}
