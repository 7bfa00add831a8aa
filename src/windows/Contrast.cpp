// SPDX-License-Identifier: GPL-3.0-or-later
#include "windows/Contrast.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr Colour kBlack{0, 0, 0};
constexpr Colour kWhite{255, 255, 255};

double linear(std::uint8_t part) {
  const double share = part / 255.0;
  return share <= 0.04045 ? share / 12.92 : std::pow((share + 0.055) / 1.055, 2.4);
}

double luminance(Colour colour) {
  return 0.2126 * linear(colour.red) + 0.7152 * linear(colour.green) + 0.0722 * linear(colour.blue);
}

std::uint8_t between(std::uint8_t from, std::uint8_t to, double share) {
  return static_cast<std::uint8_t>(std::lround(from + (to - from) * share));
}

}  // namespace

double contrast(Colour one, Colour other) {
  const auto [dark, light] = std::minmax({luminance(one), luminance(other)});
  return (light + 0.05) / (dark + 0.05);
}

Colour standingOut(Colour colour, Colour other, double wanted) {
  if (contrast(colour, other) >= wanted) return colour;
  const Colour end = contrast(kBlack, other) > contrast(kWhite, other) ? kBlack : kWhite;
  constexpr int kSteps = 64;
  for (int step = 1; step < kSteps; ++step) {
    const double share = static_cast<double>(step) / kSteps;
    const Colour mixed{between(colour.red, end.red, share), between(colour.green, end.green, share),
                       between(colour.blue, end.blue, share)};
    if (contrast(mixed, other) >= wanted) return mixed;
  }
  return end;
}
