// SPDX-License-Identifier: GPL-3.0-or-later
#include "tray/NoticeMotion.h"

namespace {

constexpr Twips kFromRightEdge = 50;
constexpr Twips kBelowScreen = 100;
constexpr Twips kStep = 15;
constexpr std::int16_t kSecondsUp = 5;

}  // namespace

void NoticeMotion::load(TwipsSize screen) {
  left_ = screen.width - window_.width - kFromRightEdge;
  top_ = screen.height + kBelowScreen;
}

void NoticeMotion::setUp(TwipsSize screen) {
  load(screen);
  visible_ = true;
}

void NoticeMotion::show() {
  if (enabled_) return;
  interval_ = kReady;
  visible_ = true;
  enabled_ = true;
}

void NoticeMotion::tick(TwipsSize screen) {
  switch (interval_) {
    case kSlidingUp:
      top_ -= kStep;
      if (top_ > screen.height - window_.height) return;
      interval_ = kWaiting;
      seconds_ = 0;
      return;
    case kWaiting:
      ++seconds_;
      if (seconds_ >= kSecondsUp) interval_ = kSlidingDown;
      return;
    case kSlidingDown:
      top_ += kStep;
      if (top_ < screen.height) return;
      enabled_ = false;
      interval_ = kReady;
      visible_ = false;
      return;
    default: load(screen); interval_ = kSlidingUp;
  }
}

void NoticeMotion::click() { interval_ = kSlidingDown; }
