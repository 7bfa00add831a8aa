// SPDX-License-Identifier: GPL-3.0-or-later
// For systems that are not asked yet.
#include "platform/Desktop.h"
#include "platform/Installed.h"

std::optional<FoundProgram> programFor(TextView /*command*/) { return std::nullopt; }

std::optional<bool> trayStands() { return std::nullopt; }

std::optional<std::vector<Text>> missingFonts(const std::vector<Text>& /*families*/) {
  return std::nullopt;
}

std::unique_ptr<Autostart> makeAutostart(const Text& /*executable*/,
                                         const std::vector<Text>& /*arguments*/) {
  return nullptr;
}
