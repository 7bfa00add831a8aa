// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include "barcode/ModcodeBarre.h"

using ModcodeBarre::Interleaved2of5;

namespace {

// What stands between start and stop.
Text between(const Text& result) {
  if (result.size() < 2 || result.front() != 201 || result.back() != 202) return u"?";
  return result.substr(1, result.size() - 2);
}

Text pairOf(int value) {
  return {static_cast<char16_t>(u'0' + value / 10), static_cast<char16_t>(u'0' + value % 10)};
}

}  // namespace

TEST(Interleaved2of5, StandsBetweenStartAndStop) {
  EXPECT_EQ(Interleaved2of5(u"0123", false), (Text{201, 34, 56, 202}));
  EXPECT_EQ(Interleaved2of5(u"123", false), (Text{201, 34, 56, 202}));
  EXPECT_EQ(Interleaved2of5(u"123", true), (Text{201, 33 + 12, 33 + 36, 202}));
}

TEST(Interleaved2of5, EachPairHasItsCharacter) {
  for (int value = 0; value < 100; ++value) {
    const auto character = static_cast<char16_t>(value < 94 ? 33 + value : 195 + value - 94);
    EXPECT_EQ(Interleaved2of5(pairOf(value), false), (Text{201, character, 202})) << value;
  }
  EXPECT_EQ(between(Interleaved2of5(u"9394", false)), (Text{126, 195}));
  EXPECT_EQ(between(Interleaved2of5(u"959697989900", false)), (Text{196, 197, 198, 199, 200, 33}));
}

TEST(Interleaved2of5, AZeroMakesTheCountEven) {
  const struct {
    Text digits;
    bool withCheck;
    Text encoded;  // with the zero and the check digit
  } rows[] = {
      {u"7", false, u"07"},          {u"7", true, u"79"},
      {u"12", false, u"12"},         {u"12", true, u"0123"},
      {u"12345", false, u"012345"},  {u"12345", true, u"123457"},
      {u"123456", false, u"123456"}, {u"123456", true, u"01234565"},
      {u"0", true, u"00"},           {u"9999999", true, u"99999995"},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(Interleaved2of5(row.digits, row.withCheck), Interleaved2of5(row.encoded, false));
    EXPECT_EQ(Interleaved2of5(row.digits, row.withCheck).size(), row.encoded.size() / 2 + 2);
  }
}

TEST(Interleaved2of5, TheCheckDigitWeighsFromTheRight) {
  for (std::size_t count = 1; count <= 9; ++count) {
    for (std::size_t place = 0; place < count; ++place) {
      for (int d = 0; d <= 9; ++d) {
        Text digits(count, u'0');
        digits[place] = static_cast<char16_t>(u'0' + d);
        const int sum = (count - place) % 2 == 1 ? 3 * d : d;
        const auto check = static_cast<char16_t>(u'0' + (10 - sum % 10) % 10);
        const Text whole = (count % 2 == 0 ? u"0" : u"") + digits + check;
        EXPECT_EQ(Interleaved2of5(digits, true), Interleaved2of5(whole, false));
      }
    }
  }
}

TEST(Interleaved2of5, WhatIsNoDigitEmptiesTheResult) {
  for (const bool withCheck : {false, true}) {
    for (const Text digits : {u"", u"A", u"/", u":", u"12 4", u"-1", u"1.2", u"123x", u"\u0661"}) {
      EXPECT_EQ(Interleaved2of5(digits, withCheck), u"");
    }
  }
}

TEST(Interleaved2of5, NoCounterOverflows) {
  const Text result = Interleaved2of5(Text(199'999, u'9'), true);
  EXPECT_EQ(result.size(), 100'002U);
  // 3 × 9 × 100,000 + 9 × 99,999 ends in 1.
  EXPECT_EQ(result[100'000], 195 + 99 - 94);
  EXPECT_EQ(result[1], 195 + 99 - 94);
}
