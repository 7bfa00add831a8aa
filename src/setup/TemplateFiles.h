// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>
#include <system_error>
#include <vector>

#include "text/Text.h"

// The paths of the files of a program folder's template, in it (UTF-8, with slashes), in their
// order. Links are none.
std::vector<std::string> templateFiles(const Text& templateFolder, std::error_code& error);
