// SPDX-License-Identifier: GPL-3.0-or-later
#include "sync/Listing.h"

#include <algorithm>
#include <deque>

#include "platform/FileCopy.h"
#include "sync/SyncTexts.h"
#include "text/Wildcard.h"

namespace {

constexpr std::size_t kEntriesBetweenYields = 1000;

bool meansEverything(const Text& pattern) { return pattern.empty() || pattern == u"*.*"; }

bool isHidden(NativeView name) { return !name.empty() && name.front() == '.'; }

NativeName below(NativeView folder, NativeView name) {
  NativeName path(folder);
  if (!path.empty()) path += kNativeSeparator;
  return path.append(name);
}

class Walk {
 public:
  Walk(const Text& pattern, Side side, SyncProgress& progress, Listing& listing)
      : pattern_(pattern),
        everything_(meansEverything(pattern)),
        side_(side),
        progress_(progress),
        listing_(listing) {}

  void run() {
    bool missing = false;
    const Failure failure = tree_.open(listing_.root, &missing);
    listing_.rootMissing = missing;
    if (failure && !missing) addObstacle({}, ObstacleKind::Unreadable, failure);
    if (failure) return;
    listing_.fileSystem = tree_.fileSystem();
    queue_.emplace_back();
    while (!queue_.empty() && !listing_.stopped) {
      listFolder(queue_.front());
      queue_.pop_front();
    }
  }

 private:
  bool wants(NativeView name) const {
    if (isHidden(name)) return isCopyLeftover(name);
    return everything_ || matchesPattern(nativeText(name), pattern_);
  }

  // False when the work is to end.
  bool yield(const Text& folder) {
    if (!progress_.listing(side_, folder, listing_.files.size())) listing_.stopped = true;
    return !listing_.stopped;
  }

  void listFolder(const NativeName& folder) {
    Text shown = listing_.root + nativeText(folder);
    if (!folder.empty()) shown += static_cast<char16_t>(kNativeSeparator);
    if (!yield(shown)) return;

    std::vector<FolderEntry> entries;
    const Failure failure = tree_.read(
        folder, [this](NativeView name) { return wants(name); },
        [&](FolderEntry&& entry) {
          entries.push_back(std::move(entry));
          return entries.size() % kEntriesBetweenYields != 0 || yield(shown);
        });
    // What was read of it stands; of the rest nobody knows.
    if (failure) addObstacle(folder, ObstacleKind::Unreadable, failure);
    std::sort(entries.begin(), entries.end(),
              [](const FolderEntry& a, const FolderEntry& b) { return a.name < b.name; });
    for (const FolderEntry& entry : entries) take(below(folder, entry.name), entry);
  }

  void take(NativeName&& path, const FolderEntry& entry) {
    switch (entry.kind) {
      case EntryKind::File:
        if (isHidden(entry.name)) {
          listing_.leftovers.push_back(std::move(path));
        } else {
          listing_.add(path, entry.state);
        }
        return;
      case EntryKind::Folder: queue_.push_back(std::move(path)); return;
      case EntryKind::FolderLink: addObstacle(path, ObstacleKind::FolderLink, {}); return;
      case EntryKind::Special: addObstacle(path, ObstacleKind::Special, {}); return;
      case EntryKind::Unreadable:
        addObstacle(path, ObstacleKind::Unreadable, entry.failure);
        return;
    }
  }

  void addObstacle(NativeView path, ObstacleKind kind, const Failure& failure) {
    listing_.obstacles.push_back({.path = NativeName(path), .kind = kind, .failure = failure});
    progress_.trace(obstacleLine(listing_.root, listing_.obstacles.back()));
  }

  const Text& pattern_;
  bool everything_;
  Side side_;
  SyncProgress& progress_;
  Listing& listing_;
  FolderTree tree_;
  std::deque<NativeName> queue_;
};

}  // namespace

void Listing::add(NativeView path, const FileState& state) {
  files.push_back({.state = state,
                   .nameAt = names.size(),
                   .nameLength = static_cast<std::uint32_t>(path.size())});
  names.append(path);
}

void ViderListe(Listing& listing) { listing = {}; }

Listing listFolder(const Text& root, const Text& pattern, Side side, SyncProgress& progress) {
  Listing listing;
  listing.root = root;
  Walk(pattern, side, progress, listing).run();
  return listing;
}
