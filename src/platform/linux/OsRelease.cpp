// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/linux/OsRelease.h"

#include "platform/linux/CommandWords.h"
#include "text/Split.h"
#include "text/Utf.h"

SystemDescription descriptionOfRelease(std::string_view bytes) {
  SystemDescription description;
  Text versionId;
  Text buildId;
  for (const std::string_view line : splitLines(bytes)) {
    const std::size_t equals = line.find('=');
    if (line.starts_with('#') || equals == std::string_view::npos) continue;
    const std::string_view key = line.substr(0, equals);
    const std::vector<Text> words = splitCommandWords(fromUtf8(line.substr(equals + 1)));
    const Text value = words.empty() ? Text() : words.front();
    if (key == "NAME") description.name = value;
    if (key == "VERSION") description.version = value;
    if (key == "VERSION_ID") versionId = value;
    if (key == "BUILD_ID") buildId = value;
  }
  // A distribution that never stands still has no version, at most the number of a build.
  if (description.version.empty()) description.version = versionId;
  if (description.version.empty()) description.version = buildId;
  return description;
}
