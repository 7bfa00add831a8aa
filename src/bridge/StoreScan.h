// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "bridge/AllowedHosts.h"
#include "bridge/NameSearch.h"
#include "bridge/StoreImage.h"

inline constexpr std::string_view kEndMarker = "_e-o-v_";
inline constexpr std::int64_t kFirstPosition = 3;  // counted from 1; the first two are never seen
inline constexpr std::int64_t kBackWindow = 256;   // how far before the last hit a scan begins
inline constexpr std::size_t kMostValueBytes = 256;

struct ScanResult {
  enum class Outcome { Found, NotFound, Failed };
  Outcome outcome = Outcome::NotFound;
  std::int64_t position = kFirstPosition;  // of the name when found, of the scan when it failed
  std::string value;                       // raw bytes up to the end marker
  bool hasHost = false;                    // the store is SQLite, so the command's page is known
  std::string host;
  std::vector<std::string> refusedHosts;  // of the rows that were passed over, in order, each once
  Failure failure;
};

// Searches `image` for the command cookie: from 256 bytes before `offset` (the last known 1-based
// position) to the end, then the whole. In an SQLite image only the name of a live cookie row of an
// allowed host counts; elsewhere every occurrence does. `yield` is called between pieces of the
// scan, so that whoever waits can go on living.
//
// A value is read to the end marker, at most 256 bytes; one that the end of the image cuts off is a
// failure.
ScanResult scanStore(const StoreImage& image, std::int32_t offset, const AllowedHosts& hosts,
                     const std::function<void()>& yield);

// "cookie refusé, hôte : " + the host.
Text refusedHostLine(std::string_view host);

// "erreur" + description + " " + number + " - i=" + the position of the scan.
Text scanErrorLine(const Failure& failure, std::int64_t position);
