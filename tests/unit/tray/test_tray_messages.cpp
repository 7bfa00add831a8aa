// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <limits>

#include "tray/TrayMessages.h"

TEST(TipText, IsTheNameAndVersionPaddedTo64Characters) {
  const Text tip = tipText({1, 4, 67});
  EXPECT_EQ(tip.size(), 64u);
  EXPECT_EQ(tip, Text(u"Tavrollo V1.4.67") + Text(48, u' '));
}

TEST(TipText, KeepsOnly64Characters) {
  const int longest = std::numeric_limits<int>::max();
  EXPECT_EQ(tipText({longest, longest, longest}).size(), kTipLength);
  EXPECT_EQ(kTipLength, 64u);
}

TEST(TrayMessage, IsThePlaceInTwipsOverTheTwipsOfAPixel) {
  EXPECT_EQ(trayMessage(512 * 15, 15), 512);
  EXPECT_EQ(trayMessage(513 * 15, 15), 513);
  EXPECT_EQ(trayMessage(514 * 12, 12), 514);
  EXPECT_EQ(trayMessage(516 * 14.4, 14.4), 516);
}

TEST(TrayMessage, PopsTheMenuUpForThreeMessagesOnly) {
  for (int message = 500; message < 530; ++message) {
    EXPECT_EQ(popsMenuUp(message), message == 513 || message == 514 || message == 516) << message;
  }
  EXPECT_FALSE(popsMenuUp(0));
  EXPECT_FALSE(popsMenuUp(-513));
}

TEST(TrayMessage, NumbersAreTheWindowSystems) {
  EXPECT_EQ(kLeftButtonDown, 513);
  EXPECT_EQ(kLeftButtonUp, 514);
  EXPECT_EQ(kLeftDoubleClick, 515);
  EXPECT_EQ(kRightButtonDown, 516);
  EXPECT_EQ(kRightButtonUp, 517);
}
