// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <windows.h>

// Windows counts time in tenths of a microsecond since 1601.

inline constexpr std::int64_t kTicksASecond = 10'000'000;
inline constexpr std::int64_t kTicksBefore1970 = 116'444'736'000'000'000;

inline std::int64_t ticksOf(const FILETIME& time) {
  return static_cast<std::int64_t>((std::uint64_t{time.dwHighDateTime} << 32) | time.dwLowDateTime);
}

// Seconds since 1970; what is below a second is cut off, also before 1970.
inline std::int64_t unixSeconds(std::int64_t ticks) {
  const std::int64_t since = ticks - kTicksBefore1970;
  return since / kTicksASecond - (since % kTicksASecond < 0 ? 1 : 0);
}

// Nanoseconds since 1970; what they cannot express becomes the nearest that they can.
inline std::int64_t unixNanoseconds(std::int64_t ticks) {
  constexpr std::int64_t kMost = INT64_MAX / 100;
  const std::int64_t since = ticks - kTicksBefore1970;
  if (since > kMost) return INT64_MAX;
  return since < -kMost ? INT64_MIN : since * 100;
}
