// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

// Launchers as the desktop describes them (Desktop Entry Specification 1.5).
struct DesktopEntry {
  std::string type;
  std::string name;
  std::string icon;
  std::string exec;     // the command line, quoting and field codes still in it
  std::string tryExec;  // a program that must be there for the entry to count
  bool terminal = false;
  bool hidden = false;           // as good as deleted
  bool noDisplay = false;        // in no menu, but it opens files all the same
  bool autostartEnabled = true;  // the switch of desktops for what a session starts
  std::string path;              // the entry's own file
};

// Reads the group [Desktop Entry] of an entry's bytes, keys without a language only. Nothing when
// there is no such group.
std::optional<DesktopEntry> parseDesktopEntry(std::string_view bytes, const std::string& path);

// The arguments that start the entry's program on `files`. An entry without a place for files gets
// them at its end. Nothing when the entry is no application, is hidden, or is ill-formed.
std::optional<std::vector<std::string>> desktopEntryCommand(const DesktopEntry& entry,
                                                            const std::vector<std::string>& files);

// The data folders that launchers are looked for in, the user's own first.
std::vector<std::string> desktopDataFolders();

// The file of the entry `id` ("org.example.Editor.desktop"): the first in `dataFolders`. A "-" of
// the id may stand for a sub-folder of applications. "" when there is none.
std::string findDesktopEntry(const std::string& id, const std::vector<std::string>& dataFolders);
