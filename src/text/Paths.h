// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <filesystem>

#include "text/Text.h"

// Paths that settings and commands carry are Text; the file system's own form is made at the call.

// Both never throw, and what one makes the other takes back without loss.
std::filesystem::path toPath(TextView text);
Text fromPath(const std::filesystem::path& path);

// `path` with every separator of the other kind (slash or backslash) turned into `separator`.
Text withSeparator(TextView path, char16_t separator);

// As withSeparator, with the separator of this system.
Text nativePath(TextView path);

// This system's separator, "\" or "/".
char16_t nativeSeparator();

// What stands in front of the last native separator of `path` ("" without one), and what behind it.
Text folderOf(const Text& path);
Text nameOf(const Text& path);

// The web application's root: `shortcutPath` cut in front of its first "res_css\js" or "res_css/js"
// (so it ends with a separator), or "" when it holds neither.
Text webApplicationRoot(TextView shortcutPath);

// The folder in which documents and programs are opened: the root of `currentFolder`, that is its
// first three characters (C:\), or "/" where paths have no drive.
Text startInFolder(TextView currentFolder, char16_t separator);
