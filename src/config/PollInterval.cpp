// SPDX-License-Identifier: GPL-3.0-or-later
#include "config/PollInterval.h"

#include <algorithm>

#include "text/Numbers.h"

namespace {

constexpr std::int32_t kShortest = 600;
constexpr std::int32_t kLongest = 5000;
constexpr std::int32_t kStep = 100;

// config.cfg may hold any 32-bit number: a step must not overflow.
std::int32_t inRange(std::int64_t interval) {
  return static_cast<std::int32_t>(std::clamp<std::int64_t>(interval, kShortest, kLongest));
}

}  // namespace

std::optional<std::int32_t> typedInterval(TextView text, const LocaleData& locale) {
  const std::optional<std::int16_t> typed = toInt16(text, locale);
  if (!typed) return std::nullopt;
  return inRange(*typed);
}

std::int32_t longerInterval(std::int32_t interval) {
  return inRange(std::int64_t{interval} + kStep);
}

std::int32_t shorterInterval(std::int32_t interval) {
  return inRange(std::int64_t{interval} - kStep);
}
