// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "text/Text.h"

// The folders that are kept in step.

// `path` with a separator at its end; an empty path stays empty.
Text AjouterAntislash(const Text& path);

// The user's own files below the web application's root, and the two places of the shortcut table:
// the live one, and the copy that travels with the user's files.
Text userFilesRoot(const Text& webRoot);
Text liveShortcutTable(const Text& webRoot);
Text travellingShortcutTable(const Text& webRoot);

// True when one of the folders is the other, or stands somewhere in it, also through links: a copy
// would then end up in what is copied.
bool foldersOverlap(const Text& one, const Text& other);
