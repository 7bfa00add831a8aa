// SPDX-License-Identifier: GPL-3.0-or-later
#include "text/Numbers.h"

#include <gtest/gtest.h>

#include <limits>

namespace {

const LocaleData kFrench = frenchLocale();
const LocaleData kPoint = {u'.', "%m/%d/%Y"};

}  // namespace

TEST(Numbers, IntegersAreReadUpToTheirBounds) {
  const struct {
    Text text;
    std::optional<std::int16_t> int16;
    std::optional<std::int32_t> int32;
  } rows[] = {
      {u"0", 0, 0},
      {u"1", 1, 1},
      {u"007", 7, 7},
      {u"  42 ", 42, 42},
      {u"+5", 5, 5},
      {u"-5", -5, -5},
      {u"1e3", 1000, 1000},
      {u"32767", 32767, 32767},
      {u"32768", std::nullopt, 32768},
      {u"-32768", -32768, -32768},
      {u"-32769", std::nullopt, -32769},
      {u"2147483647", std::nullopt, 2147483647},
      {u"2147483648", std::nullopt, std::nullopt},
      {u"-2147483648", std::nullopt, std::numeric_limits<std::int32_t>::min()},
      {u"-2147483649", std::nullopt, std::nullopt},
      {u"1e999", std::nullopt, std::nullopt},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(toInt16(row.text, kFrench), row.int16);
    EXPECT_EQ(toInt32(row.text, kFrench), row.int32);
  }
}

TEST(Numbers, WhatIsNoNumberIsRefused) {
  for (const Text text :
       {u"",  u" ", u"abc",  u"12abc", u"1 2", u"--1", u"+-1", u"-+1", u"++1", u"+",
        u"-", u",", u"0x10", u"1;",    u"\t1", u"１",  u"nan", u"inf", u"e",   u"1e"}) {
    EXPECT_EQ(toInt16(text, kFrench), std::nullopt);
    EXPECT_EQ(toInt32(text, kFrench), std::nullopt);
    EXPECT_EQ(toDouble(text, kFrench), std::nullopt);
    EXPECT_EQ(myClngCook(text, kFrench), 0);
  }
}

TEST(Numbers, HalvesAreRoundedToTheEvenNeighbour) {
  const struct {
    Text text;
    std::int32_t number;
  } rows[] = {
      {u"0,5", 0},     {u"1,5", 2},
      {u"2,5", 2},     {u"-0,5", 0},
      {u"-1,5", -2},   {u"566,5", 566},
      {u"567,5", 568}, {u"567,4", 567},
      {u"567,6", 568}, {u"2147483647,4", 2147483647},
  };
  for (const auto& row : rows) EXPECT_EQ(toInt32(row.text, kFrench), row.number);
  EXPECT_EQ(toInt32(u"2147483647,5", kFrench), std::nullopt);
  EXPECT_EQ(toInt16(u"32767,5", kFrench), std::nullopt);
}

TEST(Numbers, TheDecimalSeparatorIsTheLocales) {
  EXPECT_EQ(toDouble(u"567,5", kFrench), 567.5);
  EXPECT_EQ(toDouble(u"567.5", kPoint), 567.5);
  EXPECT_EQ(toDouble(u"567.5", kFrench), std::nullopt);
  EXPECT_EQ(toDouble(u"567,5", kPoint), std::nullopt);
  EXPECT_EQ(toDouble(u"1,2,3", kFrench), std::nullopt);
}

TEST(Numbers, MyClngCookAnswersZeroForAnythingElse) {
  EXPECT_EQ(myClngCook(u"1234", kFrench), 1234);
  EXPECT_EQ(myClngCook(u"abc", kFrench), 0);
  EXPECT_EQ(myClngCook(u"99999999999", kFrench), 0);
}

TEST(Numbers, IntegersAreWrittenWithoutALeadingBlank) {
  EXPECT_EQ(numberText(std::int64_t{0}), u"0");
  EXPECT_EQ(numberText(std::int64_t{1000}), u"1000");
  EXPECT_EQ(numberText(std::int64_t{-1}), u"-1");
  EXPECT_EQ(numberText(std::numeric_limits<std::int64_t>::min()), u"-9223372036854775808");
}

TEST(Numbers, DoublesAreWrittenInTheShortestFormThatReadsBack) {
  const struct {
    double number;
    Text text;
  } rows[] = {
      {567.0, u"567"},       {567.5, u"567,5"}, {0.1, u"0,1"},
      {-0.25, u"-0,25"},     {0.0, u"0"},       {100000000000000.0, u"100000000000000"},
      {0.00001, u"0,00001"}, {1e15, u"1e+15"},  {1.5e300, u"1,5e+300"},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(numberText(row.number, kFrench), row.text);
    EXPECT_EQ(toDouble(row.text, kFrench), row.number);
  }
  EXPECT_EQ(numberText(567.5, kPoint), u"567.5");
  EXPECT_EQ(numberText(1e-300, kFrench), u"0");
}

TEST(Numbers, AKeyIsTheLastNineCharacters) {
  const struct {
    std::int32_t number;
    Text key;
  } rows[] = {
      {0, u"000000000"},         {1, u"000000001"},          {42, u"000000042"},
      {999999999, u"999999999"}, {1234567890, u"234567890"}, {-5, u"0000000-5"},
  };
  for (const auto& row : rows) EXPECT_EQ(nineDigits(row.number), row.key);
}

TEST(Numbers, AGroupedNumberHasTheLocalesDecimalsAndGroups) {
  const struct {
    double number;
    Text text;
  } rows[] = {
      {0, u"0,00"},
      {1, u"1,00"},
      {999.99, u"999,99"},
      {999.996, u"1\u00A0000,00"},
      {1024, u"1\u00A0024,00"},
      {12345.6, u"12\u00A0345,60"},
      {123456, u"123\u00A0456,00"},
      {1234567.891, u"1\u00A0234\u00A0567,89"},
      {-1, u"-1,00"},
      {-123, u"-123,00"},
      {-1234.5, u"-1\u00A0234,50"},
      {-0.001, u"0,00"},
      {1.005859375, u"1,01"},
      {1e15, u"1\u00A0000\u00A0000\u00A0000\u00A0000\u00A0000,00"},
  };
  for (const auto& row : rows) EXPECT_EQ(groupedNumberText(row.number, kFrench), row.text);
  EXPECT_EQ(groupedNumberText(std::numeric_limits<double>::max(), kFrench).size(),
            309u + 102u + 3u);
}

TEST(Numbers, AGroupedNumbersHalvesAreRoundedAwayFromZero) {
  EXPECT_EQ(groupedNumberText(1.125, kFrench), u"1,13");
  EXPECT_EQ(groupedNumberText(1.375, kFrench), u"1,38");
  EXPECT_EQ(groupedNumberText(-1.125, kFrench), u"-1,13");
}

TEST(Numbers, ALocaleMayHaveNoGroupsAndOtherDecimals) {
  EXPECT_EQ(groupedNumberText(1234567.5, kPoint), u"1234567.50");
  EXPECT_EQ(groupedNumberText(1234567.5, {u'.', "", u',', 0}), u"1,234,568");
  EXPECT_EQ(groupedNumberText(1234.5, {u'.', "", u',', 3}), u"1,234.500");
}
