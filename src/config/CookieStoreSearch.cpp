// SPDX-License-Identifier: GPL-3.0-or-later
#include "config/CookieStoreSearch.h"

#include <algorithm>
#include <deque>
#include <filesystem>
#include <system_error>
#include <unordered_set>
#include <utility>
#include <vector>

#include "text/CaseFold.h"
#include "text/Paths.h"
#include "text/Wildcard.h"

namespace {

namespace fs = std::filesystem;

constexpr TextView kMark = u"firefox";

struct Subfolder {
  Text name;
  bool isLink;
};

struct Listing {
  std::vector<Subfolder> folders;
  std::vector<Text> files;  // those that fit the pattern
};

bool fits(const Text& name, const Text& pattern) {
  return !name.starts_with(u'.') && matchesPattern(name, pattern);
}

// Sorted by name, so that the order is the same everywhere.
Listing list(const fs::path& folder, const Text& pattern) {
  Listing listing;
  std::error_code error;
  for (fs::directory_iterator entry(folder, error), end; !error && entry != end;
       entry.increment(error)) {
    std::error_code gone;
    const Text name = fromPath(entry->path().filename());
    if (entry->is_directory(gone)) {
      listing.folders.push_back({name, entry->is_symlink(gone)});
    } else if (fits(name, pattern) && entry->is_regular_file(gone)) {
      listing.files.push_back(name);
    }
  }
  std::sort(listing.folders.begin(), listing.folders.end(),
            [](const Subfolder& a, const Subfolder& b) { return a.name < b.name; });
  std::sort(listing.files.begin(), listing.files.end());
  return listing;
}

Text withTrailingSeparator(Text folder) {
  const bool closed = folder.ends_with(u'/') || folder.ends_with(nativeSeparator());
  if (!closed) folder += nativeSeparator();
  return folder;
}

class Walk {
 public:
  explicit Walk(const CookieStoreSearch& search) : search_(search) {}

  SearchOutcome run() {
    const fs::path start = toPath(search_.folder);
    std::error_code error;
    if (!fs::is_directory(start, error)) return {SearchEnd::NoStartFolder, 0};

    enqueue(withTrailingSeparator(search_.folder), fs::canonical(start, error));
    while (!queue_.empty()) {
      const Waiting folder = std::move(queue_.front());
      queue_.pop_front();
      if (!search_.folderVisited(folder.path)) return {SearchEnd::Stopped, count_};
      visit(folder);
      if (search_.folderDone) search_.folderDone(folder.path);
    }
    return {SearchEnd::Done, count_};
  }

 private:
  struct Waiting {
    Text path;      // by the way on which it was met
    fs::path real;  // with all links resolved
  };

  void visit(const Waiting& folder) {
    const Listing listing = list(folder.real, search_.pattern);
    for (const Subfolder& subfolder : listing.folders) {
      const fs::path real = folder.real / toPath(subfolder.name);
      std::error_code error;
      const fs::path target = subfolder.isLink ? fs::canonical(real, error) : real;
      if (!error) enqueue(folder.path + subfolder.name + nativeSeparator(), target);
    }
    for (const Text& file : listing.files) {
      const Text path = folder.path + file;
      if (toLower(path).find(kMark) == Text::npos) continue;
      ++count_;
      search_.found(path);
    }
  }

  void enqueue(Text path, const fs::path& real) {
    if (!met_.insert(real.native()).second) return;
    if (search_.folderQueued) search_.folderQueued(path);
    queue_.push_back({std::move(path), real});
  }

  const CookieStoreSearch& search_;
  std::deque<Waiting> queue_;
  std::unordered_set<fs::path::string_type> met_;
  int count_ = 0;
};

}  // namespace

SearchOutcome searchCookieStores(const CookieStoreSearch& search) { return Walk(search).run(); }
