// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <map>
#include <string>
#include <string_view>

// What was installed into a program folder last: a file's path in it (UTF-8, with slashes), and the
// digest of what was put there.
using InstalledFiles = std::map<std::string, std::string>;

// The list as a file: a comment, then a line for each file as sha256sum writes it.
std::string installedFilesText(const InstalledFiles& files);

// The list that such a file holds. Lines that are none of it are passed over: of a file that is not
// in the list nothing is known, so that it is never replaced.
InstalledFiles parseInstalledFiles(std::string_view text);
