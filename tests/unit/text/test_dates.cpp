// SPDX-License-Identifier: GPL-3.0-or-later
#include "text/Dates.h"

#include <gtest/gtest.h>

#include "text/Utf.h"

namespace {

struct Row {
  TextView text;
  const char* format;
  std::optional<std::int64_t> day;
};

const Row kRows[] = {
    {u"01/01/1970", kDayMonthYear, 0},
    {u"31/12/1969", kDayMonthYear, -1},
    {u"29/02/2024", kDayMonthYear, 19782},
    {u" 1/3/2024 ", kDayMonthYear, 19783},
    {u"29/02/2023", kDayMonthYear, std::nullopt},
    {u"00/01/2024", kDayMonthYear, std::nullopt},
    {u"01/13/2024", kDayMonthYear, std::nullopt},
    {u"32/01/2024", kDayMonthYear, std::nullopt},
    {u"01/01/2024x", kDayMonthYear, std::nullopt},
    {u"01/01/", kDayMonthYear, std::nullopt},
    {u"01/01", kDayMonthYear, std::nullopt},
    {u"01/01/202", kDayMonthYear, std::nullopt},
    {u"01-01-2024", kDayMonthYear, std::nullopt},
    {u"jj/mm/aaaa", kDayMonthYear, std::nullopt},
    {u"", kDayMonthYear, std::nullopt},
    // A year of two digits, whatever the format says.
    {u"01/01/29", kDayMonthYear, 21550},
    {u"01/01/30", kDayMonthYear, -14610},
    {u"01.01.2024", "%d.%m.%Y", 19723},
    {u"01/02/24", "%D", 19724},
    {u"01/02/2024", "%m/%d/%Y", 19724},
    {u"2024-01-02", "%F", 19724},
    {u"2. 1. 2024", "%-d. %-m. %Y", 19724},
    {u" 2/1/24", "%e/%m/%y", 19724},
    // What stands between the numbers may lie outside ASCII.
    {u"2024年1月2日", "%Y年%m月%d日", 19724},
    {u"2024年1月2", "%Y年%m月%d日", std::nullopt},
    {u"2024. 1.\u00A02.", "%Y. %-m.\u00A0%-d.", 19724},
    // Formats that write a date in another way.
    {u"2 janv. 2024", "%d %b %Y", std::nullopt},
    {u"2024", "%", std::nullopt},
};

}  // namespace

TEST(Dates, ADayIsReadByItsFormat) {
  for (const Row& row : kRows) {
    EXPECT_EQ(dayNumber(row.text, row.format), row.day) << toUtf8(row.text) << " " << row.format;
  }
}
