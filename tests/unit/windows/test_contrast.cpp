// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include "windows/Contrast.h"

namespace {

constexpr Colour kBlack{0, 0, 0};
constexpr Colour kWhite{255, 255, 255};

}  // namespace

TEST(Contrast, IsThatOfTheGuidelines) {
  struct Row {
    Colour one;
    Colour other;
    double expected;
  };
  const Row rows[] = {
      {kBlack, kWhite, 21.0},
      {kWhite, kWhite, 1.0},
      {{0x77, 0x77, 0x77}, kWhite, 4.48},  // the well-known greys around the limit
      {{0x76, 0x76, 0x76}, kWhite, 4.54},
      {{0, 0, 255}, kWhite, 8.59},
      {{255, 0, 0}, kWhite, 4.00},
      {{48, 140, 198}, kWhite, 3.69},
  };
  for (const Row& row : rows) {
    EXPECT_NEAR(contrast(row.one, row.other), row.expected, 0.005);
    EXPECT_EQ(contrast(row.one, row.other), contrast(row.other, row.one));
  }
}

TEST(Contrast, AColourThatStandsOutStaysAsItIs) {
  EXPECT_EQ(standingOut({0x76, 0x76, 0x76}, kWhite, kTextContrast), (Colour{0x76, 0x76, 0x76}));
  EXPECT_EQ(standingOut({255, 0, 0}, kWhite, kMarkContrast), (Colour{255, 0, 0}));
}

TEST(Contrast, AnotherGoesTowardsTheEndThatStandsOutAndNoFurther) {
  const Colour blue = standingOut({48, 140, 198}, kWhite, kTextContrast);
  EXPECT_GE(contrast(blue, kWhite), kTextContrast);
  EXPECT_LT(contrast(blue, kWhite), 4.8);
  EXPECT_GT(blue.blue, blue.green) << "the hue stays";
  EXPECT_GT(blue.green, blue.red);

  const Colour link = standingOut({0, 0, 255}, {0x35, 0x35, 0x35}, kTextContrast);
  EXPECT_GE(contrast(link, {0x35, 0x35, 0x35}), kTextContrast);
  EXPECT_EQ(link.blue, 255);
}

TEST(Contrast, BlackOrWhiteStandsOutFromEveryGrey) {
  for (int grey = 0; grey <= 255; ++grey) {
    const auto part = static_cast<std::uint8_t>(grey);
    const Colour behind{part, part, part};
    EXPECT_GE(contrast(standingOut(behind, behind, kTextContrast), behind), kTextContrast) << grey;
  }
}
