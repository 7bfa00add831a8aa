// SPDX-License-Identifier: GPL-3.0-or-later
#include "windows/SplashFade.h"

#include <limits>

namespace {

constexpr std::int16_t kFirstOpacity = 8;
constexpr std::int16_t kStep = 5;
constexpr double kSeconds = 5.0;

}  // namespace

void SplashFade::start(double now) {
  opacity_ = kFirstOpacity;
  startTime_ = now;
}

SplashFade::Step SplashFade::tick(double now) {
  // After midnight the difference is negative for most of a day; the splash then stays.
  if (now - startTime_ > kSeconds) return {0, false, true};

  const Step step{opacity_, opacity_ == kFirstOpacity, false};
  // A splash that stays must not count itself over the edge and back into the range.
  if (opacity_ <= std::numeric_limits<std::int16_t>::max() - kStep) {
    opacity_ = static_cast<std::int16_t>(opacity_ + kStep);
  }
  return step;
}
