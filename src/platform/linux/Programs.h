// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>

// Which files are programs, and where they are.

// True for a regular file that may be executed and that the kernel knows how to: a binary or a
// script with "#!". The mode alone says little: on a memory stick every document is executable.
bool isProgram(const std::string& path);

// The file that a name without "/" stands for in PATH; "" when there is none.
std::string programInPath(const std::string& name);
