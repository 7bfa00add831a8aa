// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>

#include "text/Text.h"

// The search for Firefox's cookie stores below a folder, breadth first. A result is a file whose
// name fits the pattern and does not begin with ".", and whose full path holds "firefox" in
// capitals or small letters. Every folder is looked into, hidden ones too, and those that symbolic
// links lead to; but each real folder once only, by the way on which it was met first. What cannot
// be read, or vanishes meanwhile, is passed over. On Windows links are not told from folders.
struct CookieStoreSearch {
  Text folder;   // where it starts, with or without a trailing separator
  Text pattern;  // as matchesPattern has it

  // All three get a folder's path with a trailing separator: when it joins the queue, before it is
  // looked into, and when that is over and it leaves the queue. False from folderVisited stops the
  // search: nothing may be touched any more, since the window may be gone.
  std::function<void(const Text& folder)> folderQueued = nullptr;
  std::function<bool(const Text& folder)> folderVisited;
  std::function<void(const Text& folder)> folderDone = nullptr;

  // Called for each result with its full path; a folder's results come sorted by name.
  std::function<void(const Text& path)> found;
};

enum class SearchEnd {
  Done,
  NoStartFolder,  // there is no such folder; nothing was called
  Stopped,        // by folderVisited
};

struct SearchOutcome {
  SearchEnd end = SearchEnd::Done;
  int found = 0;

  bool operator==(const SearchOutcome&) const = default;
};

SearchOutcome searchCookieStores(const CookieStoreSearch& search);
