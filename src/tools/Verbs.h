// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <ostream>
#include <string>
#include <string_view>
#include <vector>

// The verbs of tavrolloctl. Each gets the arguments behind its name, writes its result to `out` and
// one sentence to `err` when it fails, and returns the exit status. Nothing is written to `out`
// before the result is known to be whole; what is read line by line is answered line by line.

inline constexpr int kDone = 0;
inline constexpr int kDifferent = 1;
inline constexpr int kFailed = 2;

// The command in a browser's cookie store: its position, its page's host and its value.
int cookieVerb(const std::vector<std::string>& arguments, std::ostream& out, std::ostream& err);

// The settings in a config.cfg, one name and value a line.
int configVerb(const std::vector<std::string>& arguments, std::ostream& out, std::ostream& err);

// The shortcuts in a shortQrCode.js: FreeId, then key, name and address, one a line.
int shortcutsVerb(const std::vector<std::string>& arguments, std::ostream& out, std::ostream& err);

// The characters that draw a text's barcode in its font; or of one text for each line of the
// standard input.
int codebarVerb(const std::vector<std::string>& arguments, std::ostream& out, std::ostream& err);

// What two folders differ in, one file a line. Exit status 0 the same, 1 different, 2 not all could
// be compared.
int compareVerb(const std::vector<std::string>& arguments, std::ostream& out, std::ostream& err);

// Copies what two folders differ in, and writes what was copied, one file a line.
int syncVerb(const std::vector<std::string>& arguments, std::ostream& out, std::ostream& err);

// What is well with the installation and what is not, one point a line. Exit status 0 all well, 1
// something to mend.
int doctorVerb(const std::vector<std::string>& arguments, std::ostream& out, std::ostream& err);

// True when the arguments ask for the verb's usage and nothing else.
bool asksForHelp(const std::vector<std::string>& arguments);

// For a verb that takes one file: the file's bytes. When they cannot be had, or when the arguments
// are other than one file, says so (or writes the usage) and answers false with the exit status.
bool readArgumentFile(const std::vector<std::string>& arguments, std::string_view usage,
                      std::ostream& out, std::ostream& err, std::string& bytes, int& status);
