// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>

#include "platform/Questions.h"

// The boxes and texts of looking for a cookie store and for the shortcut table.

// There is no folder to begin the search in.
Box startFolderMissingBox(const Text& folder);

// The search found nothing.
Box noCookieStoreBox();

// The search found several; the user is to choose one.
Box severalCookieStoresBox(std::size_t count);

// The user chose one of several: take it (Yes), or not.
Box confirmCookieStoreBox(const Text& path);

// Before the file dialog for Firefox's store: what to look for, and where.
Box cookieStoreHintBox(const Text& startFolder);

// Another shortcut table was loaded.
Box shortcutsReadAgainBox(std::size_t count);

// How many stores were found.
Text searchResultText(std::size_t count);

// What the search window shows in the place of a folder when the search is over.
Text searchEndText();

// What to do when no store was found, below the empty list: the usual reason is a browser that
// never ran.
Text searchAgainText();

// What is left to do when the store was chosen.
Text storeChosenText();
