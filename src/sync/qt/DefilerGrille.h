// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QAbstractItemView>
#include <QWheelEvent>
#include <cstdint>

// Moves the grid's first visible row by `step`, `count` times; it stops at the ends.
void DefilerGrille(std::int32_t step, std::uint8_t count, QAbstractItemView& grid);

// Turns what a wheel or a touchpad tells into whole notches.
class WheelNotches {
 public:
  // How many notches are complete with this event: more than 0 towards the user.
  int add(const QWheelEvent& event);

 private:
  int angle_ = 0;  // what is left, in eighths of a degree
};
