// SPDX-License-Identifier: GPL-3.0-or-later
#include "barcode/ModuleSize.h"

#include <gtest/gtest.h>

TEST(ModuleSize, AModuleIsTheTwentyFourthPartOfTheSize) {
  EXPECT_DOUBLE_EQ(moduleWidth(36, 96), 2);
  EXPECT_DOUBLE_EQ(moduleWidth(24, 72), 1);
  EXPECT_DOUBLE_EQ(moduleWidth(36, 1200), 25);
  EXPECT_DOUBLE_EQ(moduleWidth(36, 96 * 1.5), 3);
}

TEST(ModuleSize, IsWholeDotsAndNeverNone) {
  const struct {
    double width;
    int dots;
  } rows[] = {{0.01, 1}, {0.67, 1}, {1.49, 1}, {1.5, 2}, {2, 2}, {2.49, 2}, {24.6, 25}};
  for (const auto& row : rows) EXPECT_EQ(wholeModule(row.width), row.dots) << row.width;
}

TEST(ModuleSize, AWideSymbolGetsSmallerUntilItFits) {
  EXPECT_EQ(moduleThatFits(25, 100, 2500), 25);
  EXPECT_EQ(moduleThatFits(25, 100, 2499), 24);
  EXPECT_EQ(moduleThatFits(25, 100, 10000), 25) << "never larger than asked for";
  EXPECT_EQ(moduleThatFits(25, 100, 100), 1);
  EXPECT_EQ(moduleThatFits(25, 100, 99), 0);
  EXPECT_EQ(moduleThatFits(25, 100, 800, 8), 8);
  EXPECT_EQ(moduleThatFits(25, 100, 799, 8), 0);
  EXPECT_EQ(moduleThatFits(0.2, 100, 200), 1);
  EXPECT_EQ(moduleThatFits(25, 0, 100), 0);
  EXPECT_EQ(moduleThatFits(25, 50, -1), 0) << "no room at all";
}

TEST(ModuleSize, ALargePictureGetsSmallerUntilItsAreaIsAllowed) {
  EXPECT_EQ(moduleThatCovers(9, 40, 50, 200'000), 9);
  EXPECT_EQ(moduleThatCovers(10, 40, 50, 200'000), 10);
  EXPECT_EQ(moduleThatCovers(11, 40, 50, 200'000), 10);
  EXPECT_EQ(moduleThatCovers(10, 40, 50, 199'999), 9);
  EXPECT_EQ(moduleThatCovers(10, 40, 50, 1'999), 0);
  EXPECT_EQ(moduleThatCovers(375, 1'000'000, 50, 1e9), 4) << "the product is beyond an int";
  EXPECT_EQ(moduleThatCovers(10, 0, 50, 100), 0);
}
