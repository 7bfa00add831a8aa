// SPDX-License-Identifier: GPL-3.0-or-later
#include "sync/Comparison.h"

#include <algorithm>
#include <deque>
#include <set>

#include "text/CaseFold.h"
#include "text/Paths.h"

namespace {

NativeName folded(NativeView path) { return toPath(toLower(nativeText(path))).native(); }

// Who belongs together: for each file of one side its place on the other, or kNoFile.
struct Partners {
  std::vector<std::uint32_t> ofSource;
  std::vector<std::uint32_t> ofBackup;

  void join(std::uint32_t source, std::uint32_t backup) {
    ofSource[source] = backup;
    ofBackup[backup] = source;
  }
};

void joinSamePaths(const Listing& source, const Listing& backup, Partners& partners) {
  FileIndex index;
  NouvelleCollection(index);
  index.reserve(backup.files.size());
  for (std::uint32_t j = 0; j < backup.files.size(); ++j) index.emplace(backup.path(j), j);
  for (std::uint32_t i = 0; i < source.files.size(); ++i) {
    const auto found = index.find(source.path(i));
    if (found != index.end()) partners.join(i, found->second);
  }
}

// The rest of both sides, capitals and small letters being the same. Where several files of a side
// are one that way, the first has the partner.
void joinSameButForCase(const Listing& source, const Listing& backup, Partners& partners) {
  FileIndex index;
  std::deque<NativeName> keys;
  for (std::uint32_t j = 0; j < backup.files.size(); ++j) {
    if (partners.ofBackup[j] != kNoFile) continue;
    keys.push_back(folded(backup.path(j)));
    index.emplace(keys.back(), j);
  }
  if (index.empty()) return;
  for (std::uint32_t i = 0; i < source.files.size(); ++i) {
    if (partners.ofSource[i] != kNoFile) continue;
    const NativeName key = folded(source.path(i));
    if (!CleExiste(key, index)) continue;
    partners.join(i, index[key]);
    index.erase(key);
  }
}

// What a side has but could not be read.
class Unknown {
 public:
  explicit Unknown(const Listing& listing) {
    for (const Obstacle& obstacle : listing.obstacles) paths_.insert(folded(obstacle.path));
  }

  bool holds(NativeView path) const {
    if (paths_.empty()) return false;
    if (paths_.contains(NativeName())) return true;  // the whole side
    const NativeName key = folded(path);
    for (std::size_t end = 0; end != NativeName::npos;) {
      end = key.find(kNativeSeparator, end + 1);
      if (paths_.contains(key.substr(0, end))) return true;
    }
    return false;
  }

 private:
  std::set<NativeName> paths_;
};

bool isSameTime(std::int64_t a, std::int64_t b) {
  const auto [earlier, later] = std::minmax(a, b);
  return static_cast<std::uint64_t>(later) - static_cast<std::uint64_t>(earlier) <=
         kSameTimeSeconds;
}

std::size_t unreadableIn(const Listing& listing) {
  return static_cast<std::size_t>(
      std::count_if(listing.obstacles.begin(), listing.obstacles.end(),
                    [](const Obstacle& o) { return o.kind == ObstacleKind::Unreadable; }));
}

}  // namespace

DifferenceTable compareListings(const Listing& source, const Listing& backup) {
  Partners partners{.ofSource = std::vector(source.files.size(), kNoFile),
                    .ofBackup = std::vector(backup.files.size(), kNoFile)};
  joinSamePaths(source, backup, partners);
  joinSameButForCase(source, backup, partners);
  const Unknown unknownSource(source);
  const Unknown unknownBackup(backup);

  DifferenceTable table;
  for (std::uint32_t i = 0; i < source.files.size(); ++i) {
    const std::uint32_t j = partners.ofSource[i];
    if (j == kNoFile && unknownBackup.holds(source.path(i))) {
      ++table.withheld;
    } else if (j == kNoFile) {
      table.rows.push_back({.action = SyncAction::NewInSource, .source = i, .backup = kNoFile});
    } else {
      const std::int64_t ours = source.files[i].state.modified;
      const std::int64_t theirs = backup.files[j].state.modified;
      if (isSameTime(ours, theirs)) continue;
      const SyncAction action = theirs > ours ? SyncAction::BackupNewer : SyncAction::SourceNewer;
      table.rows.push_back({.action = action, .source = i, .backup = j});
    }
  }
  for (std::uint32_t j = 0; j < backup.files.size(); ++j) {
    if (partners.ofBackup[j] != kNoFile) continue;
    if (unknownSource.holds(backup.path(j))) {
      ++table.withheld;
    } else {
      table.rows.push_back({.action = SyncAction::NewInBackup, .source = kNoFile, .backup = j});
    }
  }
  return table;
}

std::size_t notCompared(const Listing& source, const Listing& backup,
                        const DifferenceTable& table) {
  return table.withheld + unreadableIn(source) + unreadableIn(backup);
}

void ViderGrille(DifferenceTable& table) { table = {}; }

bool CleExiste(NativeView key, const FileIndex& index) { return index.contains(key); }

void NouvelleCollection(FileIndex& index) { index = FileIndex(); }
