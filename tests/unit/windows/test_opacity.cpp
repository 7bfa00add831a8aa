// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include "windows/Opacity.h"

TEST(Opacity, RunsFrom0To255) {
  EXPECT_FALSE(isOpacity(-32768));
  EXPECT_FALSE(isOpacity(-1));
  EXPECT_TRUE(isOpacity(0));
  EXPECT_TRUE(isOpacity(8));
  EXPECT_TRUE(isOpacity(255));
  EXPECT_FALSE(isOpacity(256));
  EXPECT_FALSE(isOpacity(258));
  EXPECT_FALSE(isOpacity(32767));
}

TEST(Opacity, BecomesAPartOfOne) {
  EXPECT_DOUBLE_EQ(opacityLevel(0), 0.0);
  EXPECT_DOUBLE_EQ(opacityLevel(51), 0.2);
  EXPECT_DOUBLE_EQ(opacityLevel(255), 1.0);
}
