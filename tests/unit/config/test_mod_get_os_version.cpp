// SPDX-License-Identifier: GPL-3.0-or-later
#include "config/modGetOsVersion.h"

#include <gtest/gtest.h>

TEST(ModGetOsVersion, EveryKnownVersionHasItsLabel) {
  const struct {
    SystemVersion version;
    Text label;
  } rows[] = {
      {{1, 4, 0}, u"Win 95"},     {{1, 4, 10}, u"Win 98"},   {{1, 4, 98}, u"Win ME"},
      {{2, 3, 51}, u"Win NT 3"},  {{2, 4, 0}, u"Win NT 4"},  {{2, 5, 0}, u"Win 2000"},
      {{2, 5, 1}, u"Win XP"},     {{2, 6, 0}, u"Win Vista"}, {{2, 6, 1}, u"Win Seven"},
      {{2, 6, 2}, u"Win (8) 10"},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(osVersionLabel(row.version), row.label);
    EXPECT_TRUE(isKnownWindows(row.label));
  }
}

TEST(ModGetOsVersion, AnyOtherVersionIsToldByItsNumbers) {
  const struct {
    SystemVersion version;
    Text label;
  } rows[] = {
      {{1, 4, 90}, u"Unknown (1.4.90)"},
      {{2, 6, 3}, u"Unknown (2.6.3)"},
      {{2, 10, 0}, u"Unknown (2.10.0)"},
      {{2, 4, 10}, u"Unknown (2.4.10)"},
      {{1, 6, 1}, u"Unknown (1.6.1)"},
      {{4, 6, 1}, u"Unknown (4.6.1)"},
      {{0, 0, 0}, u"Unknown (0.0.0)"},
      {{4294967295, 4294967295, 4294967295}, u"Unknown (4294967295.4294967295.4294967295)"},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(osVersionLabel(row.version), row.label);
    EXPECT_FALSE(isKnownWindows(row.label));
  }
}

TEST(ModGetOsVersion, TheRunningSystemIsAsked) {
  EXPECT_EQ(modGetOsVersion(), osVersionLabel(systemVersion()));
}
