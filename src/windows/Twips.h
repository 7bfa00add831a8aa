// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cmath>
#include <cstdint>

// Lengths and positions of windows are in twips: 1440 to the inch, 567 to the centimetre.
using Twips = std::int32_t;

inline constexpr Twips kTwipsPerInch = 1440;
inline constexpr Twips kTwipsPerCentimetre = 567;
inline constexpr Twips kTwipsPerPixel = 15;  // one logical pixel, at 96 to the inch

inline constexpr Twips twipsFromPixels(int pixels) { return pixels * kTwipsPerPixel; }

// To the nearest pixel.
inline int pixelsFromTwips(double twips) {
  return static_cast<int>(std::lround(twips / kTwipsPerPixel));
}

// As pixelsFromTwips, kept between 1 and `most`: a damaged scale must not ask for a huge window.
inline int boundedPixelsFromTwips(double twips, int most) {
  const double pixels = twips / kTwipsPerPixel;
  if (!(pixels > 1)) return 1;
  if (pixels >= most) return most;
  return pixelsFromTwips(twips);
}

// A picture's natural length in hundredths of a millimetre.
inline constexpr double hundredthsFromPixels(double pixels) { return pixels * 2540.0 / 96.0; }

// The splash window's size, in twips when the scale is 567 units per centimetre.
struct SplashSize {
  double width = 0;
  double height = 0;
};

// The size that shows a picture of this size (hundredths of a millimetre) at the scales of the
// settings (drawing units per centimetre).
inline constexpr SplashSize splashSize(double pictureWidth, double pictureHeight, double scaleX,
                                       double scaleY) {
  return {pictureWidth * scaleX / 1000.0, pictureHeight * scaleY / 1000.0};
}
