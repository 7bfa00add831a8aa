// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <limits>

#include "windows/Twips.h"

TEST(Twips, Are1440ToTheInch567ToTheCentimetreAnd15ToThePixel) {
  EXPECT_EQ(kTwipsPerInch, 1440);
  EXPECT_EQ(kTwipsPerCentimetre, 567);
  EXPECT_EQ(twipsFromPixels(1), 15);
  EXPECT_EQ(twipsFromPixels(96), kTwipsPerInch);
  EXPECT_EQ(twipsFromPixels(-3), -45);
}

TEST(Twips, BecomeTheNearestPixel) {
  EXPECT_EQ(pixelsFromTwips(0), 0);
  EXPECT_EQ(pixelsFromTwips(7), 0);
  EXPECT_EQ(pixelsFromTwips(8), 1);
  EXPECT_EQ(pixelsFromTwips(1500), 100);
  EXPECT_EQ(pixelsFromTwips(-15), -1);
}

TEST(Twips, AreKeptWithinBoundsForASizeFromTheSettings) {
  EXPECT_EQ(boundedPixelsFromTwips(7200.9, 1280), 480);
  EXPECT_EQ(boundedPixelsFromTwips(1e300, 1280), 1280);
  EXPECT_EQ(boundedPixelsFromTwips(0, 1280), 1);
  EXPECT_EQ(boundedPixelsFromTwips(-7200, 1280), 1);
  EXPECT_EQ(boundedPixelsFromTwips(std::numeric_limits<double>::quiet_NaN(), 1280), 1);
  EXPECT_EQ(boundedPixelsFromTwips(std::numeric_limits<double>::infinity(), 1280), 1280);
}

TEST(SplashSize, IsThePicturesSizeTimesTheScaleOverAThousand) {
  const SplashSize size = splashSize(12700, 8000, 567.0, 567.0);
  EXPECT_DOUBLE_EQ(size.width, 7200.9);
  EXPECT_DOUBLE_EQ(size.height, 4536.0);
}

TEST(SplashSize, FollowsEachScaleOnItsOwn) {
  const SplashSize size = splashSize(1000, 1000, 283.5, 1134.0);
  EXPECT_DOUBLE_EQ(size.width, 283.5);
  EXPECT_DOUBLE_EQ(size.height, 1134.0);
}

TEST(SplashSize, IsTheNaturalSizeAtTheDefaultScale) {
  const SplashSize size =
      splashSize(hundredthsFromPixels(480), hundredthsFromPixels(300), 567.0, 567.0);
  EXPECT_EQ(pixelsFromTwips(size.width), 480);
  EXPECT_EQ(pixelsFromTwips(size.height), 300);
}
