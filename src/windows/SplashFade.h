// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

// The splash window's life, driven by TimerSplash every 50 ms: it fades in and ends after five
// seconds. Times are seconds since midnight.
class SplashFade {
 public:
  static constexpr int kIntervalMilliseconds = 50;

  // What a tick asks for. `opacity` counts only when `ends` is false.
  struct Step {
    std::int16_t opacity = 0;  // may lie out of the range a window can have
    bool showsNow = false;     // show the window, once it has this opacity
    bool ends = false;         // unload the window and stop the timer
  };

  void start(double now);
  Step tick(double now);

 private:
  std::int16_t opacity_ = 8;
  double startTime_ = 0;
};
