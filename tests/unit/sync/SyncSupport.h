// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "platform/Files.h"
#include "support/Scratch.h"
#include "sync/Comparison.h"
#include "text/Utf.h"

// What the tests of the synchronisation have in common.

inline constexpr std::int64_t kOld = 1'400'000'000;
inline constexpr std::int64_t kNew = 1'450'000'000;

// A path with slashes, as tests write it, as the file system has it; and back.
inline NativeName native(std::string_view path) {
  return toPath(fromUtf8Lossless(path)).make_preferred().native();
}
inline std::string slashed(std::string path) {
  if (kNativeSeparator != '/') std::replace(path.begin(), path.end(), '\\', '/');
  return path;
}
inline std::string plain(NativeView path) { return slashed(toUtf8Lossless(nativeText(path))); }

// Writes down what it is told, and stops the work where it is asked to.
class RecordingProgress : public SyncProgress {
 public:
  bool listing(Side side, const Text& folder, std::size_t files) override {
    listed.push_back((side == Side::Source ? "source " : "backup ") +
                     slashed(toUtf8Lossless(folder)) + " " + std::to_string(files));
    return !stopListing || !stopListing(listed.size());
  }
  bool copying(std::size_t row, std::uint64_t bytes) override {
    copied.emplace_back(row, bytes);
    if (whileCopying) whileCopying(row, bytes);
    return !stopCopying || !stopCopying(row, bytes);
  }
  void waiting() override { ++waits; }
  void trace(const Text& line) override { lines.push_back(slashed(toUtf8Lossless(line))); }

  std::vector<std::string> listed;
  std::vector<std::pair<std::size_t, std::uint64_t>> copied;
  std::vector<std::string> lines;
  int waits = 0;
  std::function<bool(std::size_t)> stopListing;
  std::function<void(std::size_t, std::uint64_t)> whileCopying;
  std::function<bool(std::size_t, std::uint64_t)> stopCopying;
};

inline void setTime(const std::string& path, std::int64_t seconds) {
  const std::chrono::sys_seconds time{std::chrono::seconds(seconds)};
  std::filesystem::last_write_time(path, std::chrono::file_clock::from_sys(time));
}

inline std::int64_t timeOf(const std::string& path) {
  using namespace std::chrono;
  const std::optional<FileStamp> stamp = fileStamp(fromPath(path));
  return stamp ? floor<seconds>(nanoseconds(stamp->modified)).count() : -1;
}

// A listing as if its files had been found.
inline Listing listingOf(const std::vector<std::pair<std::string, std::int64_t>>& files,
                         const std::vector<std::string>& obstacles = {}) {
  Listing listing;
  for (const auto& [path, modified] : files)
    listing.add(native(path), {.modified = modified, .size = 1});
  for (const std::string& path : obstacles) listing.obstacles.push_back({.path = native(path)});
  return listing;
}

inline std::vector<std::string> pathsOf(const Listing& listing) {
  std::vector<std::string> paths;
  for (std::size_t i = 0; i < listing.files.size(); ++i) paths.push_back(plain(listing.path(i)));
  return paths;
}

// The rows as lines: code, source path, backup path.
inline std::vector<std::string> rowsOf(const Listing& source, const Listing& backup,
                                       const std::vector<DifferenceRow>& rows) {
  std::vector<std::string> lines;
  for (const DifferenceRow& row : rows) {
    std::string line = std::to_string(static_cast<int>(row.action)) + " ";
    line += row.source == kNoFile ? "-" : plain(source.path(row.source));
    line += " ";
    line += row.backup == kNoFile ? "-" : plain(backup.path(row.backup));
    lines.push_back(line);
  }
  return lines;
}

inline Listing listed(const Scratch& folder, const Text& pattern = u"*.*") {
  RecordingProgress progress;
  return listFolder(folder.text() + nativeSeparator(), pattern, Side::Source, progress);
}

// What a comparison of the two folders, as they are now, says.
inline std::vector<std::string> differencesOf(const Scratch& source, const Scratch& backup) {
  const Listing ours = listed(source);
  const Listing theirs = listed(backup);
  return rowsOf(ours, theirs, compareListings(ours, theirs).rows);
}
