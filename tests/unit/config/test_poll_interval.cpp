// SPDX-License-Identifier: GPL-3.0-or-later
#include "config/PollInterval.h"

#include <gtest/gtest.h>

#include <limits>

namespace {

struct Typed {
  TextView text;
  std::optional<std::int32_t> interval;
};

}  // namespace

TEST(PollInterval, WhatIsTypedIsBroughtIntoTheRange) {
  const Typed rows[] = {
      {u"600", 600},
      {u"599", 600},
      {u"601", 601},
      {u"5000", 5000},
      {u"5001", 5000},
      {u"32767", 5000},
      {u"1", 600},
      {u"0", 600},
      {u"-5", 600},
      {u" 1200 ", 1200},
      {u"1200,4", 1200},
      {u"32768", {}},
      {u"99999", {}},
      {u"-99999", {}},
      {u"", {}},
      {u"abc", {}},
      {u"12a", {}},
      {u"1 000 0", {}},
      {u"9999999999999", {}},
  };
  for (const Typed& row : rows) {
    EXPECT_EQ(typedInterval(row.text, frenchLocale()), row.interval)
        << ::testing::PrintToString(Text(row.text));
  }
}

TEST(PollInterval, AStepIsAHundredMilliseconds) {
  EXPECT_EQ(longerInterval(1000), 1100);
  EXPECT_EQ(shorterInterval(1000), 900);
}

TEST(PollInterval, AStepStaysInTheRange) {
  EXPECT_EQ(longerInterval(5000), 5000);
  EXPECT_EQ(longerInterval(4950), 5000);
  EXPECT_EQ(shorterInterval(600), 600);
  EXPECT_EQ(shorterInterval(650), 600);
}

TEST(PollInterval, AStepFromWhatTheFileHeldComesBackIntoTheRange) {
  EXPECT_EQ(longerInterval(200), 600);
  EXPECT_EQ(shorterInterval(60000), 5000);
  EXPECT_EQ(longerInterval(std::numeric_limits<std::int32_t>::max()), 5000);
  EXPECT_EQ(shorterInterval(std::numeric_limits<std::int32_t>::min()), 600);
}
