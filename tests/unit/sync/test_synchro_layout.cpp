// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include "sync/SynchroLayout.h"

namespace {

TEST(SynchroLayout, AsDrawn) {
  const SynchroLayout at = synchroLayout(0, 0);
  EXPECT_EQ(at.backupCountLeft, 9720);
  EXPECT_EQ(at.backupPictureLeft, 8880);
  EXPECT_EQ(at.backupFolderLeft, 9000);
  EXPECT_EQ(at.closeLeft, 14160);
  EXPECT_EQ(at.closeTop, 7920);
  EXPECT_EQ(at.outcomeLeft, 7800);
  EXPECT_EQ(at.outcomeTop, 8040);
  EXPECT_EQ(at.gridWidth, 15132);
  EXPECT_EQ(at.gridHeight, 5052);
  EXPECT_EQ(at.pathColumnWidth, 4600);
}

TEST(SynchroLayout, AThousandTwipsWiderAndFiveHundredHigher) {
  const SynchroLayout at = synchroLayout(1000, 500);
  EXPECT_EQ(at.backupCountLeft, 10220);
  EXPECT_EQ(at.backupPictureLeft, 9380);
  EXPECT_EQ(at.backupFolderLeft, 9500);
  EXPECT_EQ(at.closeLeft, 15160);
  EXPECT_EQ(at.closeTop, 8420);
  EXPECT_EQ(at.outcomeLeft, 8800);
  EXPECT_EQ(at.outcomeTop, 8540);
  EXPECT_EQ(at.gridWidth, 16132);
  EXPECT_EQ(at.gridHeight, 5552);
  EXPECT_EQ(at.pathColumnWidth, 5100);
}

TEST(SynchroLayout, HalfATwipCountsForPlacesAndIsRoundedForColumns) {
  const SynchroLayout at = synchroLayout(15, 0);
  EXPECT_EQ(at.backupFolderLeft, 9007.5);
  EXPECT_EQ(at.pathColumnWidth, 4608);
}

}  // namespace
