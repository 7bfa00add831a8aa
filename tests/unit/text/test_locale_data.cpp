// SPDX-License-Identifier: GPL-3.0-or-later
#include "text/LocaleData.h"

#include <gtest/gtest.h>

#include <limits>

namespace {

std::time_t localNoon(int day, int month, int year) {
  std::tm calendar{};
  calendar.tm_mday = day;
  calendar.tm_mon = month - 1;
  calendar.tm_year = year - 1900;
  calendar.tm_hour = 12;
  calendar.tm_isdst = -1;
  return std::mktime(&calendar);
}

}  // namespace

TEST(LocaleData, FrenchHasADecimalCommaAndTheDayFirst) {
  EXPECT_EQ(frenchLocale().decimalSeparator, u',');
  EXPECT_EQ(frenchLocale().groupSeparator, u'\u00A0');
  EXPECT_EQ(frenchLocale().decimals, 2);
  EXPECT_EQ(dateText(localNoon(7, 3, 2024), frenchLocale()), u"07/03/2024");
  EXPECT_EQ(dateText(localNoon(29, 2, 2000), frenchLocale()), u"29/02/2000");
  EXPECT_EQ(dateText(localNoon(31, 12, 1999), frenchLocale()), u"31/12/1999");
}

TEST(LocaleData, AnotherLocaleWritesItsOwnDate) {
  EXPECT_EQ(dateText(localNoon(7, 3, 2024), {u'.', "%m/%d/%Y"}), u"03/07/2024");
  EXPECT_EQ(dateText(localNoon(7, 3, 2024), {u'.', "%d. März %Y"}), u"07. März 2024");
}

TEST(LocaleData, ATimeBeyondTheCalendarHasNoText) {
  EXPECT_EQ(dateText(std::numeric_limits<std::time_t>::max(), frenchLocale()), u"");
}
