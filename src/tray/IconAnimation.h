// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

// The tray icon's frame counter, driven by TimerIcon. Frame 0 is the still icon; 1 to 4 and 5 to 8
// are the two animations.
class IconAnimation {
 public:
  static constexpr int kIntervalMilliseconds = 500;

  struct Step {
    std::int16_t frame = 0;  // to be shown now
    bool goesOn = false;     // false: TimerIcon stops
  };

  // The next tick shows `frame` and runs on from there.
  void start(std::int16_t frame) { frame_ = frame; }

  Step tick();

 private:
  std::int16_t frame_ = 0;
};

// How long a handled command keeps the icon moving, and the frame it starts at.
inline constexpr int kCommandAnimationMilliseconds = 2000;
inline constexpr std::int16_t kCommandAnimationFrame = 1;
