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

inline constexpr TextView kListingDone = u"Recherche terminée";
inline constexpr TextView kSyncDone = u"Synchro terminée !";
inline constexpr TextView kCloseWithoutSync = u"Cliquez pour fermer sans synchroniser.";

// How many files a side has.
Text resultText(std::size_t count);

// Both sides are the same: on the first comparison, and after a synchronisation.
Text identicalText(bool firstComparison);

// Lines of the trace.
Text obstacleLine(const Text& root, const Obstacle& obstacle);
Text notCopiedLine(const Text& path, const Failure& failure);
Text withheldLine(std::size_t count);
Text copiedLine(std::size_t copied, std::size_t failed);
