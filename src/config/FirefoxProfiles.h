// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <optional>
#include <string_view>
#include <vector>

#include "text/Text.h"

// Where Firefox keeps its profiles. A root is a folder that holds profiles.ini.

inline constexpr TextView kFirefoxStore = u"cookies.sqlite";

// The roots of Linux, from the newest habit to the oldest, then the packaged ones. `xdgConfigHome`
// may be "", or a relative path, which counts for nothing.
std::vector<Text> firefoxRoots(const Text& home, const Text& xdgConfigHome);

// The profile folders that the bytes of a profiles.ini name, preferred first: the installations'
// own, then the default one, then the others. Never fails: what cannot be understood is passed
// over. Names are not looked up, and may lead out of `root`.
std::vector<Text> profileFolders(std::string_view iniBytes, const Text& root);

// The profile that Firefox used last.
struct LiveProfile {
  Text root;
  Text folder;

  bool operator==(const LiveProfile&) const = default;
};

// Of all profiles of the roots that hold a cookie store, the one whose store was written last (its
// write-ahead log, where it has one). Where none holds a store, the first folder named that exists.
std::optional<LiveProfile> liveProfile(const std::vector<Text>& roots);
