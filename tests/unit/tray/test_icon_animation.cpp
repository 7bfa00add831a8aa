// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <vector>

#include "tray/IconAnimation.h"

namespace {

std::vector<int> framesFrom(std::int16_t start, int ticks) {
  IconAnimation animation;
  animation.start(start);
  std::vector<int> frames;
  for (int i = 0; i < ticks; ++i) {
    const IconAnimation::Step step = animation.tick();
    frames.push_back(step.frame);
    if (!step.goesOn) break;
  }
  return frames;
}

}  // namespace

TEST(IconAnimation, TicksEveryHalfSecond) { EXPECT_EQ(IconAnimation::kIntervalMilliseconds, 500); }

TEST(IconAnimation, CyclesThroughFrames1To4) {
  EXPECT_EQ(framesFrom(1, 10), (std::vector{1, 2, 3, 4, 1, 2, 3, 4, 1, 2}));
}

TEST(IconAnimation, CyclesThroughFrames5To8) {
  EXPECT_EQ(framesFrom(5, 10), (std::vector{5, 6, 7, 8, 5, 6, 7, 8, 5, 6}));
}

TEST(IconAnimation, StartsAnywhereInItsCycle) {
  EXPECT_EQ(framesFrom(4, 3), (std::vector{4, 1, 2}));
  EXPECT_EQ(framesFrom(8, 3), (std::vector{8, 5, 6}));
}

TEST(IconAnimation, Frame0ShowsTheStillIconOnceAndStops) {
  EXPECT_EQ(framesFrom(0, 10), (std::vector{0}));
}

TEST(IconAnimation, Frame0EndsARunningAnimation) {
  IconAnimation animation;
  animation.start(kCommandAnimationFrame);
  EXPECT_EQ(animation.tick().frame, 1);
  EXPECT_TRUE(animation.tick().goesOn);
  animation.start(0);
  const IconAnimation::Step last = animation.tick();
  EXPECT_EQ(last.frame, 0);
  EXPECT_FALSE(last.goesOn);
}

TEST(IconAnimation, TheCounterStandsAt1AfterTheStillIcon) {
  IconAnimation animation;
  animation.tick();
  EXPECT_EQ(animation.tick().frame, 1);
}
