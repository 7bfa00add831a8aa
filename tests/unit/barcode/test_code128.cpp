// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include "barcode/ModcodeBarre.h"

using ModcodeBarre::Code128;

namespace {

constexpr char16_t kToC = 199;
constexpr char16_t kToB = 200;
constexpr char16_t kStartB = 204;
constexpr char16_t kStartC = 205;
constexpr char16_t kStop = 206;

// The characters of set C for pairs of digits.
Text pairs(std::initializer_list<int> values) {
  Text text;
  for (const int value : values) {
    text += static_cast<char16_t>(value < 95 ? value + 32 : value + 100);
  }
  return text;
}

// The symbol without its check character and stop; "?" when it has no stop.
Text dataOf(const Text& result) {
  if (result.size() < 3 || result.back() != kStop) return u"?";
  return result.substr(0, result.size() - 2);
}

// The check character, in arithmetic that needs no remainder on the way.
char16_t checkOf(const Text& data) {
  std::int64_t sum = 0;
  for (std::size_t i = 0; i < data.size(); ++i) {
    const int value = data[i] < 127 ? data[i] - 32 : data[i] - 100;
    sum += static_cast<std::int64_t>(i == 0 ? 1 : i) * value;
  }
  const std::int64_t check = sum % 103;
  return static_cast<char16_t>(check < 95 ? check + 32 : check + 100);
}

}  // namespace

TEST(Code128, KnownSymbols) {
  // 104 + 1 × 33 = 137, remainder 34, character 66.
  EXPECT_EQ(Code128(u"A"), (Text{kStartB, u'A', 66, kStop}));
  // 105 + 1 × 12 + 2 × 34 = 185, remainder 82, character 114.
  EXPECT_EQ(Code128(u"1234"), (Text{kStartC, 44, 66, 114, kStop}));
  // 104 + 1 × 0 = 104, remainder 1.
  EXPECT_EQ(Code128(u" "), (Text{kStartB, u' ', 33, kStop}));
  EXPECT_EQ(Code128(u"PJJ123C"),
            (Text{kStartB, u'P', u'J', u'J', u'1', u'2', u'3', u'C', 87, kStop}));
}

TEST(Code128, ChoosesBetweenTheSets) {
  const struct {
    Text text;
    Text data;
  } rows[] = {
      // at the start: four digits
      {u"1", kStartB + Text(u"1")},
      {u"12", kStartB + Text(u"12")},
      {u"123", kStartB + Text(u"123")},
      {u"1234", kStartC + pairs({12, 34})},
      {u"12345", kStartC + pairs({12, 34}) + kToB + u"5"},
      {u"123456", kStartC + pairs({12, 34, 56})},
      {u"123A", kStartB + Text(u"123A")},
      {u"1234A", kStartC + pairs({12, 34}) + kToB + u"A"},
      {u"12345A", kStartC + pairs({12, 34}) + kToB + u"5A"},
      // in the middle: six
      {u"A12345B", kStartB + Text(u"A12345B")},
      {u"A123456B", kStartB + Text(u"A") + kToC + pairs({12, 34, 56}) + kToB + u"B"},
      {u"A1234567B", kStartB + Text(u"A") + kToC + pairs({12, 34, 56}) + kToB + u"7B"},
      {u"A1234B5678", kStartB + Text(u"A1234B") + kToC + pairs({56, 78})},
      // at the end: exactly four, or six and more
      {u"AB123", kStartB + Text(u"AB123")},
      {u"AB1234", kStartB + Text(u"AB") + kToC + pairs({12, 34})},
      {u"A12345", kStartB + Text(u"A1") + kToC + pairs({23, 45})},
      {u"A123456", kStartB + Text(u"A") + kToC + pairs({12, 34, 56})},
      {u"A1234567", kStartB + Text(u"A") + kToC + pairs({12, 34, 56}) + kToB + u"7"},
      {u"A123B", kStartB + Text(u"A123B")},
      {u"A12B4", kStartB + Text(u"A12B4")},
      // there and back
      {u"1234A5678", kStartC + pairs({12, 34}) + kToB + u"A" + kToC + pairs({56, 78})},
      {u"123456A7", kStartC + pairs({12, 34, 56}) + kToB + u"A7"},
      {u"0000", kStartC + pairs({0, 0})},
      {u"9999", kStartC + pairs({99, 99})},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(dataOf(Code128(row.text)), row.data) << testing::PrintToString(row.text);
  }
}

TEST(Code128, EachPairOfSetCHasItsCharacter) {
  for (int value = 0; value < 100; ++value) {
    const Text pair = {static_cast<char16_t>(u'0' + value / 10),
                       static_cast<char16_t>(u'0' + value % 10)};
    const auto character = static_cast<char16_t>(value < 95 ? 32 + value : 195 + value - 95);
    EXPECT_EQ(dataOf(Code128(pair + pair)), (Text{kStartC, character, character})) << value;
  }
}

TEST(Code128, EncodesItsCharactersAsTheyAre) {
  for (unsigned code = 0; code <= 0xFFFF; ++code) {
    const Text one(1, static_cast<char16_t>(code));
    const bool accepted = (code >= 32 && code <= 126) || code == 198;
    EXPECT_EQ(Code128(one).empty(), !accepted) << code;
    if (accepted) {
      EXPECT_EQ(dataOf(Code128(one)), kStartB + one);
    }
  }
}

TEST(Code128, OneOtherCharacterAnywhereEmptiesTheResult) {
  for (const Text text : {u"", u"\tA", u"A\tB", u"AB\u007F", u"é", u"1234é", u"12\u0100", u"Ç"}) {
    EXPECT_EQ(Code128(text), u"");
  }
  EXPECT_EQ(dataOf(Code128(u"1234Æ")), kStartC + pairs({12, 34}) + kToB + u"Æ");
}

TEST(Code128, TheCheckCharacterWeighsByPlace) {
  bool seen[103] = {};
  for (int i = 0; i < 2000; ++i) {
    Text text = u"x";
    for (int rest = i * 37; rest > 0; rest /= 95) text += static_cast<char16_t>(32 + rest % 95);
    const Text result = Code128(text);
    const char16_t check = result[result.size() - 2];
    EXPECT_EQ(check, checkOf(dataOf(result)));
    seen[check < 127 ? check - 32 : check - 100] = true;
  }
  for (int value = 0; value < 103; ++value) EXPECT_TRUE(seen[value]) << value;
}

TEST(Code128, NoCounterOverflows) {
  for (const Text& text : {Text(100'000, u'~'), Text(100'001, u'9'), u"A" + Text(70'000, u'5')}) {
    const Text result = Code128(text);
    ASSERT_GT(result.size(), 30'000U);
    EXPECT_EQ(result[result.size() - 2], checkOf(dataOf(result)));
  }
}
