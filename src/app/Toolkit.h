// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>
#include <vector>

// What the window toolkit needs to be told on this system, and what it is asked.

// To be called before the toolkit is there: chooses what it shows windows with.
void chooseWindowPlatform();

// The arguments that are ours, in UTF-8: without the program's name and what the toolkit took for
// itself. To be called when it is there, with what it left of main()'s arguments.
std::vector<std::string> ownArguments(int count, char** arguments);
