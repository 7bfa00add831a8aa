// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <ctime>

#include "windows/SplashTexts.h"

namespace {

std::time_t noonOf(int year, int month, int day) {
  std::tm calendar{};
  calendar.tm_year = year - 1900;
  calendar.tm_mon = month - 1;
  calendar.tm_mday = day;
  calendar.tm_hour = 12;
  calendar.tm_isdst = -1;
  return std::mktime(&calendar);
}

}  // namespace

TEST(SplashTexts, VersionIsVAndThreeNumbers) {
  EXPECT_EQ(versionText({1, 0, 0}), u"V1.0.0");
  EXPECT_EQ(versionText({1, 4, 67}), u"V1.4.67");
}

TEST(SplashTexts, DateOfTheProgramFileFollowsRev) {
  EXPECT_EQ(revisionDateText(noonOf(2017, 3, 15), frenchLocale()), u"rév 15/03/2017");
}

TEST(SplashTexts, DateKeepsTenCharacters) {
  EXPECT_EQ(revisionDateText(noonOf(2017, 3, 15), {u',', "%d/%m/%Y %H:%M:%S"}), u"rév 15/03/2017");
  EXPECT_EQ(revisionDateText(noonOf(2017, 3, 5), {u'.', "%m/%d/%y"}), u"rév 03/05/17");
}
