// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include "tray/NoticeMotion.h"

namespace {

constexpr TwipsSize kScreen{19200, 12000};
constexpr TwipsSize kWindow{4500, 1500};
constexpr Twips kStart = 12100;
constexpr Twips kUp = 10500;

// A notice that has been asked for and has had its first tick.
NoticeMotion rising() {
  NoticeMotion motion(kWindow);
  motion.load(kScreen);
  motion.show();
  motion.tick(kScreen);
  return motion;
}

NoticeMotion waiting() {
  NoticeMotion motion = rising();
  while (motion.interval() == NoticeMotion::kSlidingUp) motion.tick(kScreen);
  return motion;
}

int ticksUntilHidden(NoticeMotion& motion) {
  int ticks = 0;
  while (motion.visible() && ticks < 10000) {
    motion.tick(kScreen);
    ++ticks;
  }
  return ticks;
}

}  // namespace

TEST(NoticeMotion, IntervalsAreItsStates) {
  EXPECT_EQ(NoticeMotion::kReady, 200);
  EXPECT_EQ(NoticeMotion::kSlidingUp, 10);
  EXPECT_EQ(NoticeMotion::kWaiting, 1000);
  EXPECT_EQ(NoticeMotion::kSlidingDown, 11);
}

TEST(NoticeMotion, LoadsBelowTheLowerRightCorner) {
  NoticeMotion motion(kWindow);
  motion.load(kScreen);
  EXPECT_EQ(motion.left(), 19200 - 4500 - 50);
  EXPECT_EQ(motion.top(), kStart);
  EXPECT_EQ(motion.interval(), 200);
  EXPECT_FALSE(motion.enabled());
  EXPECT_FALSE(motion.visible());
}

TEST(NoticeMotion, SetUpShowsItBelowTheScreenWithoutStartingIt) {
  NoticeMotion motion(kWindow);
  motion.setUp(kScreen);
  EXPECT_TRUE(motion.visible());
  EXPECT_FALSE(motion.enabled());
  EXPECT_EQ(motion.top(), kStart);
}

TEST(NoticeMotion, ANoticeEnablesTheTimerInTheReadyState) {
  NoticeMotion motion(kWindow);
  motion.show();
  EXPECT_TRUE(motion.enabled());
  EXPECT_TRUE(motion.visible());
  EXPECT_EQ(motion.interval(), 200);
}

TEST(NoticeMotion, TheFirstTickPlacesItByTheScreenOfNow) {
  NoticeMotion motion(kWindow);
  motion.load({15000, 9000});
  motion.show();
  motion.tick(kScreen);
  EXPECT_EQ(motion.left(), 14650);
  EXPECT_EQ(motion.top(), kStart);
  EXPECT_EQ(motion.interval(), 10);
}

TEST(NoticeMotion, SlidesUpBy15TwipsATickUntilItIsFullyVisible) {
  NoticeMotion motion = rising();
  int ticks = 0;
  for (Twips top = kStart; motion.interval() == 10; ++ticks) {
    EXPECT_EQ(motion.top(), top);
    motion.tick(kScreen);
    top -= 15;
  }
  EXPECT_EQ(ticks, 107);  // about a second for a window of 1500 twips
  EXPECT_EQ(motion.interval(), 1000);
  EXPECT_LE(motion.top(), kUp);
  EXPECT_GT(motion.top(), kUp - 15);
  EXPECT_EQ(motion.left(), 14650);
}

TEST(NoticeMotion, StopsExactlyAtTheEdgeWhenItMeetsIt) {
  NoticeMotion motion({4500, 1505});  // 12100 − 107 × 15 = 12000 − 1505
  motion.show();
  motion.tick(kScreen);
  for (int i = 0; i < 106; ++i) motion.tick(kScreen);
  EXPECT_EQ(motion.interval(), 10);
  motion.tick(kScreen);
  EXPECT_EQ(motion.interval(), 1000);
  EXPECT_EQ(motion.top(), 12000 - 1505);
}

TEST(NoticeMotion, WaitsFiveSecondsWithoutMoving) {
  NoticeMotion motion = waiting();
  const Twips top = motion.top();
  for (int second = 1; second <= 4; ++second) {
    motion.tick(kScreen);
    EXPECT_EQ(motion.interval(), 1000) << second;
  }
  motion.tick(kScreen);
  EXPECT_EQ(motion.interval(), 11);
  EXPECT_EQ(motion.top(), top);
}

TEST(NoticeMotion, SlidesDownBy15TwipsATickUntilItIsBelowTheScreenAndReadyAgain) {
  NoticeMotion motion = waiting();
  for (int second = 0; second < 5; ++second) motion.tick(kScreen);
  Twips top = motion.top();
  while (motion.visible()) {
    EXPECT_EQ(motion.interval(), 11);
    EXPECT_TRUE(motion.enabled());
    motion.tick(kScreen);
    top += 15;
    EXPECT_EQ(motion.top(), top);
  }
  EXPECT_GE(motion.top(), 12000);
  EXPECT_LT(motion.top(), 12000 + 15);
  EXPECT_FALSE(motion.enabled());
  EXPECT_EQ(motion.interval(), 200);
}

TEST(NoticeMotion, ASecondNoticeWaitsItsOwnFiveSeconds) {
  NoticeMotion motion = waiting();
  ticksUntilHidden(motion);
  motion.show();
  motion.tick(kScreen);
  EXPECT_EQ(motion.top(), kStart);
  while (motion.interval() == 10) motion.tick(kScreen);
  for (int second = 1; second <= 4; ++second) motion.tick(kScreen);
  EXPECT_EQ(motion.interval(), 1000);
  motion.tick(kScreen);
  EXPECT_EQ(motion.interval(), 11);
}

TEST(NoticeMotion, AClickWhileSlidingUpReversesAtOnce) {
  NoticeMotion motion = rising();
  for (int i = 0; i < 50; ++i) motion.tick(kScreen);
  const Twips top = motion.top();
  motion.click();
  EXPECT_EQ(motion.interval(), 11);
  motion.tick(kScreen);
  EXPECT_EQ(motion.top(), top + 15);
  ticksUntilHidden(motion);
  EXPECT_FALSE(motion.enabled());
  EXPECT_EQ(motion.interval(), 200);
  EXPECT_GE(motion.top(), kScreen.height);
}

TEST(NoticeMotion, AClickWhileWaitingCutsTheSecondsShort) {
  NoticeMotion motion = waiting();
  motion.tick(kScreen);
  motion.click();
  EXPECT_EQ(motion.interval(), 11);
  EXPECT_LE(ticksUntilHidden(motion), 101);
}

TEST(NoticeMotion, AClickWhileSlidingDownChangesNothing) {
  NoticeMotion motion = waiting();
  motion.click();
  motion.tick(kScreen);
  const Twips top = motion.top();
  motion.click();
  motion.tick(kScreen);
  EXPECT_EQ(motion.top(), top + 15);
}

TEST(NoticeMotion, ANoticeWhileOneIsUpGoesOnAsItIs) {
  NoticeMotion motion = rising();
  motion.tick(kScreen);
  const Twips top = motion.top();
  motion.show();
  EXPECT_EQ(motion.interval(), 10);
  EXPECT_EQ(motion.top(), top);

  motion = waiting();
  for (int second = 0; second < 4; ++second) motion.tick(kScreen);
  motion.show();
  motion.tick(kScreen);
  EXPECT_EQ(motion.interval(), 11);
  motion.show();
  EXPECT_EQ(motion.interval(), 11);
}

TEST(NoticeMotion, IsReadyForTheNextNoticeAfterAnyClick) {
  NoticeMotion motion(kWindow);
  motion.setUp(kScreen);
  motion.click();  // before anything has come
  motion.show();
  motion.tick(kScreen);
  EXPECT_EQ(motion.interval(), 10);
  EXPECT_TRUE(motion.visible());
}
