// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include "windows/Opacity.h"
#include "windows/SplashFade.h"

TEST(SplashFade, TicksEvery50Milliseconds) { EXPECT_EQ(SplashFade::kIntervalMilliseconds, 50); }

TEST(SplashFade, ShowsTheWindowAtTheFirstTickAlmostTransparent) {
  SplashFade fade;
  fade.start(1000.0);
  const SplashFade::Step first = fade.tick(1000.05);
  EXPECT_EQ(first.opacity, 8);
  EXPECT_TRUE(first.showsNow);
  EXPECT_FALSE(first.ends);
}

TEST(SplashFade, GrowsByFiveATickUpTo253AndThenLeavesTheRange) {
  SplashFade fade;
  fade.start(0.0);
  for (int opacity = 8; opacity <= 253; opacity += 5) {
    const SplashFade::Step step = fade.tick(1.0);
    EXPECT_EQ(step.opacity, opacity);
    EXPECT_EQ(step.showsNow, opacity == 8);
    EXPECT_TRUE(isOpacity(step.opacity));
  }
  const SplashFade::Step beyond = fade.tick(1.0);
  EXPECT_EQ(beyond.opacity, 258);
  EXPECT_FALSE(isOpacity(beyond.opacity));
  EXPECT_FALSE(beyond.ends);
}

TEST(SplashFade, EndsOnceMoreThanFiveSecondsHavePassed) {
  SplashFade fade;
  fade.start(100.0);
  EXPECT_FALSE(fade.tick(105.0).ends);
  const SplashFade::Step late = fade.tick(105.001);
  EXPECT_TRUE(late.ends);
  EXPECT_FALSE(late.showsNow);
}

TEST(SplashFade, NeverShowsTheWindowWhenTheFirstTickComesTooLate) {
  SplashFade fade;
  fade.start(100.0);
  const SplashFade::Step step = fade.tick(200.0);
  EXPECT_TRUE(step.ends);
  EXPECT_FALSE(step.showsNow);
}

TEST(SplashFade, StaysAfterMidnightForAsLongAsTheClockIsBehindItsStart) {
  SplashFade fade;
  fade.start(86398.0);
  EXPECT_TRUE(fade.tick(86398.05).showsNow);
  // A whole day of ticks: neither an end, nor a second showing, nor a way back into the range.
  constexpr int kTicksOfADay = 86390 * 20;
  int opaqueTicks = 0;
  for (int i = 0; i < kTicksOfADay; ++i) {
    const SplashFade::Step step = fade.tick(i / 20.0);
    ASSERT_FALSE(step.ends);
    ASSERT_FALSE(step.showsNow);
    ASSERT_GT(step.opacity, 8);
    if (isOpacity(step.opacity)) ++opaqueTicks;
  }
  EXPECT_EQ(opaqueTicks, 49);
}

TEST(SplashFade, StartsOverWhenItIsAskedForAgain) {
  SplashFade fade;
  fade.start(10.0);
  fade.tick(10.05);
  fade.tick(10.10);
  fade.start(14.0);
  const SplashFade::Step step = fade.tick(16.0);
  EXPECT_EQ(step.opacity, 8);
  EXPECT_TRUE(step.showsNow);
  EXPECT_FALSE(fade.tick(19.0).ends);
  EXPECT_TRUE(fade.tick(19.01).ends);
}
