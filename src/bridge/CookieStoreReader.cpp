// SPDX-License-Identifier: GPL-3.0-or-later
#include "bridge/CookieStoreReader.h"

#include <algorithm>
#include <chrono>

#include "text/AnsiCodePage.h"
#include "text/Numbers.h"
#include "text/Paths.h"
#include "text/Split.h"

namespace {

constexpr int kMostAttempts = 3;
constexpr std::int64_t kLongestReading = 60'000'000'000;  // nanoseconds
constexpr std::size_t kMostRefusedHosts = 1000;  // a stranger's pages must not fill the memory

std::int64_t latestWrite(const StoreStamp& stamp) {
  const std::int64_t store = stamp.store ? stamp.store->modified : 0;
  return stamp.log ? std::max(store, stamp.log->modified) : store;
}

// `now` is when the reading began: what was written while it went on seems to come from the future.
// A time further ahead comes from a clock that was set back, and says nothing about now.
bool isSettled(const StoreStamp& stamp, std::int64_t now) {
  const std::int64_t age = now - latestWrite(stamp);
  return age < -kLongestReading || age >= CookieStoreReader::kYoung;
}

// What the same store has lost since it was read, which would bring other commands to light.
Failure damageSince(const std::optional<StoreReading>& earlier, const StoreImage& image) {
  if (!earlier || !earlier->stamp.store || !image.stamp().store) return {};
  if (earlier->stamp.store->inode != image.stamp().store->inode) return {};
  if (earlier->isSqlite && !image.isSqlite()) return {57, u"Fichier des cookies endommagé"};
  if (image.log().wentBackSince(earlier->log)) return {57, u"Journal des cookies endommagé"};
  return {};
}

ScanResult failedBeforeScan(Failure failure) {
  ScanResult result;
  result.outcome = ScanResult::Outcome::Failed;
  result.position = 0;
  result.failure = std::move(failure);
  return result;
}

}  // namespace

std::optional<StoreReading> readStore(const Text& storePath, std::int32_t offset,
                                      const AllowedHosts& hosts,
                                      const std::optional<StoreReading>& earlier,
                                      const std::function<void()>& yield) {
  for (int attempt = 0; attempt < kMostAttempts; ++attempt) {
    StoreImage image;
    ScanResult scan;
    if (Failure failure = image.open(storePath)) {
      scan = failedBeforeScan(failure);
    } else if (Failure damage = damageSince(earlier, image)) {
      scan = failedBeforeScan(damage);
    } else {
      scan = scanStore(image, offset, hosts, yield);
    }
    if (image.unchanged()) {
      return StoreReading{std::move(scan), image.stamp(), image.log(), image.isSqlite()};
    }
  }
  return std::nullopt;
}

std::int64_t systemClock() {
  const auto now = std::chrono::system_clock::now().time_since_epoch();
  return std::chrono::duration_cast<std::chrono::nanoseconds>(now).count();
}

// A row that was refused may be allowed now: what the last reading told does not hold any longer.
void CookieStoreReader::setAllowedHosts(AllowedHosts hosts) {
  hosts_ = std::move(hosts);
  settled_ = false;
}

Text CookieStoreReader::Extract(const Text& storePath) {
  if (path_ != storePath) earlier_.reset();
  path_ = storePath;
  if (foundNothingLastTime()) return {};

  const std::int64_t now = clock_();
  std::optional<StoreReading> reading =
      readStore(storePath, cookieOffset_, hosts_, earlier_, yield_);
  settled_ = reading && isSettled(reading->stamp, now);
  readTheStore_ = reading && reading->scan.outcome != ScanResult::Outcome::Failed;
  if (!reading) return {};

  traceRefused(reading->scan.refusedHosts);
  Text value = take(reading->scan);
  if (readTheStore_) earlier_ = std::move(reading);
  return value;
}

// Without a command the store is asked for at every tick; the answer holds while nothing changed.
bool CookieStoreReader::foundNothingLastTime() const {
  return settled_ && earlier_ && earlier_->scan.outcome == ScanResult::Outcome::NotFound &&
         storeStamp(path_) == earlier_->stamp;
}

Text CookieStoreReader::take(const ScanResult& scan) {
  if (scan.outcome == ScanResult::Outcome::Found) {
    cookieOffset_ = static_cast<std::int32_t>(scan.position);
    return fromAnsi(scan.value);
  }
  if (scan.outcome == ScanResult::Outcome::Failed) {
    trace_.log(scanErrorLine(scan.failure, scan.position));
  }
  cookieOffset_ = kFirstPosition;
  return {};
}

void CookieStoreReader::traceRefused(const std::vector<std::string>& hosts) {
  for (const std::string& host : hosts) {
    if (refused_.size() == kMostRefusedHosts) refused_.clear();
    if (refused_.insert(host).second) trace_.log(refusedHostLine(host));
  }
}

Text offsetFilePath(const Text& programFolder) {
  return programFolder + nativePath(u"\\offsetCookie.dat");
}

std::int32_t loadOffsetCookie(const Text& programFolder) {
  std::string bytes;
  if (readFile(offsetFilePath(programFolder), bytes)) return 0;
  const std::vector<std::string_view> lines = splitLines(bytes);
  return lines.empty() ? 0 : myClngCook(fromAnsi(lines.front()), frenchLocale());
}

Failure saveOffsetCookie(const Text& programFolder, std::int32_t offset) {
  const Text line = numberText(static_cast<std::int64_t>(offset)).append(kCrLf);
  return replaceFile(offsetFilePath(programFolder), toAnsi(line));
}
