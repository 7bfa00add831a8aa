// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

#include "windows/Twips.h"

// A size in twips.
struct TwipsSize {
  Twips width = 0;
  Twips height = 0;
};

// How the notice window moves: up from below the screen's lower right corner, five seconds there,
// and down again. Its Timer1 drives it, and the timer's interval is the state.
class NoticeMotion {
 public:
  static constexpr int kReady = 200;
  static constexpr int kSlidingUp = 10;
  static constexpr int kWaiting = 1000;
  static constexpr int kSlidingDown = 11;

  // `window` is the notice window's size.
  explicit NoticeMotion(TwipsSize window) : window_(window) {}

  // Puts the window at its start, below the screen.
  void load(TwipsSize screen);

  // Set-up at start: the window is shown where nobody sees it yet.
  void setUp(TwipsSize screen);

  // A notice has come: shows the window and enables the timer. One that is already under way goes
  // on as it is.
  void show();

  void tick(TwipsSize screen);
  void click();

  int interval() const { return interval_; }  // milliseconds
  bool enabled() const { return enabled_; }   // the timer runs
  bool visible() const { return visible_; }
  Twips left() const { return left_; }
  Twips top() const { return top_; }

 private:
  TwipsSize window_;
  int interval_ = kReady;
  bool enabled_ = false;
  bool visible_ = false;
  std::int16_t seconds_ = 0;
  Twips left_ = 0;
  Twips top_ = 0;
};
