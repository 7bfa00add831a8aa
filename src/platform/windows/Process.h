// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>
#include <vector>
#include <windows.h>

#include "platform/Failure.h"
#include "platform/windows/Handle.h"

// Programs are started with a command line here: whoever is started splits it, nearly always in
// the way of the C library's start-up code, for which these words are quoted.

// `word` as one word of a command line: bare when nothing in it needs quoting.
std::wstring quotedWord(const std::wstring& word);

// The words of a program and its arguments as one command line.
std::wstring commandLineOf(const std::vector<Text>& arguments);

// Starts a command line in a normal window, in `folder` ("" is where we are), with none of our open
// files. ERROR_SUCCESS or the system's error; `process` (when given) gets its handle.
DWORD startCommand(const std::wstring& commandLine, const std::wstring& folder,
                   Handle* process = nullptr);
