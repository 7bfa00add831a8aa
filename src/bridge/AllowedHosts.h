// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <set>
#include <string>

#include "text/Text.h"

// Whose pages may give commands: pages from the disk (empty host), pages served by this machine,
// and the hosts that the user listed in hotes_autorises.txt in the program folder.
class AllowedHosts {
 public:
  AllowedHosts() = default;

  // One host a line; blanks around it, empty lines and lines that begin with "#" do not count.
  explicit AllowedHosts(std::string_view listFile);

  bool allows(std::string_view host) const;

 private:
  std::set<std::string, std::less<>> listed_;
};

// The list of the program folder; a missing or unreadable file lists nobody.
AllowedHosts readAllowedHosts(const Text& path);
Text allowedHostsPath(const Text& programFolder);
