// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/Failure.h"
#include "platform/Questions.h"
#include "sync/Listing.h"

// What the synchronisation says to the user.

// A folder to be listed does not exist.
Box folderMissingBox(const Text& root);

// The shortcut table could not be put among the user's files before comparing.
Box shortcutCopyFailedBox();

// A folder could not be made on the side that is copied to.
Box createSubDirBox(const Failure& failure);

// The backup would be in what it is a backup of, or around it.
Box foldersOverlapBox(const Text& backupRoot);

// Before the window opens: the stick is to be there.
Box insertDriveBox();

// The backup folder is to be opened and is not there.
Box backupFolderMissingBox(const Text& backupPath);

inline constexpr TextView kNothingListed = u"Résultat : fichier(s) trouvé(s)";
inline constexpr TextView kListingDone = u"Recherche terminée";
inline constexpr TextView kSyncDone = u"Synchro terminée !";
inline constexpr TextView kCloseWithoutSync = u"Cliquez pour fermer sans synchroniser.";

// How many files a side has.
Text resultText(std::size_t count);

// Both sides are the same: on the first comparison, and after a synchronisation.
Text identicalText(bool firstComparison);

// A line of the trace: where the shortcut table stands there is no web application's root above it.
inline constexpr TextView kNoWebRoot =
    u"Synchronisation - user_datas n'est pas connu : shortQrCode.js n'est pas dans res_css\\js";

// Lines of the trace: why a run left the live shortcut table as it was.
inline constexpr TextView kLiveTableChanged =
    u"Synchronisation - shortQrCode.js n'est pas restauré : celui en service a changé depuis la "
    u"comparaison";
inline constexpr TextView kLiveTableStayed =
    u"Synchronisation - shortQrCode.js n'est pas restauré : celui en service n'a pas pu être copié "
    u"dans user_datas";

// Lines of the trace.
Text obstacleLine(const Text& root, const Obstacle& obstacle);
Text notCopiedLine(const Text& path, const Failure& failure);
Text withheldLine(std::size_t count);
Text copiedLine(std::size_t copied, std::size_t failed);

// The line of the window about a comparison that had to leave something out, and the one about a
// run: what copiedLine says, and how much was left out of the comparison that followed.
Text notComparedLine(std::size_t notCompared);
Text reportLine(std::size_t copied, std::size_t failed, std::size_t notCompared);
