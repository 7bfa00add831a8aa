// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>
#include <optional>
#include <set>

#include "bridge/AllowedHosts.h"
#include "bridge/StoreImage.h"
#include "bridge/StoreScan.h"
#include "bridge/TraceBuffer.h"

// What one reading of the store told.
struct StoreReading {
  ScanResult scan;
  StoreStamp stamp;
  WriteAheadLog log;
  bool isSqlite;
};

// Opens the store and scans it, again when the browser wrote meanwhile: at most three times, then
// nothing. `earlier` is the last good reading, if any: when the same store has lost its header
// since, strangers' commands would come to light, and older ones when its log has lost commits; so
// both are failures.
std::optional<StoreReading> readStore(const Text& storePath, std::int32_t offset,
                                      const AllowedHosts& hosts,
                                      const std::optional<StoreReading>& earlier,
                                      const std::function<void()>& yield);

// Nanoseconds since 1970.
using Clock = std::function<std::int64_t()>;
std::int64_t systemClock();

// Fetches the command cookie's value out of the browser's store and remembers where it stood.
class CookieStoreReader {
 public:
  // Files are stamped by the clock's tick: a file that is read sooner after its last write than
  // this may have changed again without a new time. Nanoseconds.
  static constexpr std::int64_t kYoung = 50'000'000;

  CookieStoreReader(TraceBuffer& trace, std::function<void()> yield, Clock clock = systemClock)
      : trace_(trace), yield_(std::move(yield)), clock_(std::move(clock)) {}

  void setAllowedHosts(AllowedHosts hosts);

  // The 1-based position where the name was last found; 0 before the first search.
  std::int32_t cookieOffset() const { return cookieOffset_; }
  void setCookieOffset(std::int32_t offset) { cookieOffset_ = offset; }

  // The cookie's value as byte text, up to its end marker; empty when the name is not found, when
  // it could not be read (then a line tells why) or when the browser kept writing.
  Text Extract(const Text& storePath);

  // True when the last Extract learnt what the store holds, be it nothing; false when the store
  // could not be read or kept changing.
  bool readTheStore() const { return readTheStore_; }

  // False when what the last Extract read may already have changed again within the same time
  // stamp.
  bool sawSettledStore() const { return settled_; }

 private:
  bool foundNothingLastTime() const;
  Text take(const ScanResult& scan);
  void traceRefused(const std::vector<std::string>& hosts);

  TraceBuffer& trace_;
  std::function<void()> yield_;
  Clock clock_;
  AllowedHosts hosts_;
  std::int32_t cookieOffset_ = 0;
  bool settled_ = true;
  bool readTheStore_ = false;
  Text path_;
  std::optional<StoreReading> earlier_;  // the last reading of path_ that did not fail
  std::set<std::string> refused_;        // hosts that the trace has named
};

// `offsetCookie.dat` in the program folder: the offset as one decimal line.
Text offsetFilePath(const Text& programFolder);
std::int32_t loadOffsetCookie(const Text& programFolder);
Failure saveOffsetCookie(const Text& programFolder, std::int32_t offset);
