// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

// How well a text stands out from what is behind it, after the Web Content Accessibility Guidelines
// (WCAG 2.1), which hold for every screen.

// Each part from 0 to 255.
struct Colour {
  std::uint8_t red;
  std::uint8_t green;
  std::uint8_t blue;
  friend bool operator==(const Colour&, const Colour&) = default;
};

// What a text of usual size needs at least.
inline constexpr double kTextContrast = 4.5;
// What a large text needs, or a mark that says something.
inline constexpr double kMarkContrast = 3.0;

// From 1 (the same) to 21 (black and white), whichever of the two lies above.
double contrast(Colour one, Colour other);

// `colour` where its contrast to `other` is `wanted`, else the nearest one on its way to black or
// white that has it. One of the two always has kTextContrast; where none has what is wanted, the
// better of them is given.
Colour standingOut(Colour colour, Colour other, double wanted);
