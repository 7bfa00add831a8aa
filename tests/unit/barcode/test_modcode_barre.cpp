// SPDX-License-Identifier: GPL-3.0-or-later
#include "barcode/ModcodeBarre.h"

#include <gtest/gtest.h>

using namespace ModcodeBarre;

namespace {

Text ean13(TextView source, TextView addOn = {}) { return CodeBar(kEan13, source, addOn, false); }
Text ean8(TextView source, TextView addOn = {}) { return CodeBar(kEan8, source, addOn, false); }

}  // namespace

TEST(ModcodeBarre, EachTypeHasItsEncoder) {
  const Text source = u"1234567";
  EXPECT_EQ(CodeBar(1, source, u"12", true), Code39(source));
  EXPECT_EQ(CodeBar(2, source, u"12", true), EAN13(u"000001234567") + EANAddOn(u"12"));
  EXPECT_EQ(CodeBar(3, source, u"12", true), EAN8(source) + EANAddOn(u"12"));
  EXPECT_EQ(CodeBar(4, source, u"12", true), Interleaved2of5(source, true));
  EXPECT_EQ(CodeBar(4, source, u"12", false), Interleaved2of5(source, false));
  EXPECT_EQ(CodeBar(5, source, u"12", true), Code128(source));
  EXPECT_NE(Interleaved2of5(source, true), Interleaved2of5(source, false));
}

TEST(ModcodeBarre, AnyOtherTypeGivesNothing) {
  for (unsigned type = 0; type < 256; ++type) {
    const bool known = type >= 1 && type <= 5;
    EXPECT_EQ(CodeBar(static_cast<std::uint8_t>(type), u"1234567", u"", false).empty(), !known)
        << type;
  }
}

TEST(ModcodeBarre, AnEmptySourceGivesNothing) {
  for (std::uint8_t type = 1; type <= 5; ++type) {
    EXPECT_EQ(CodeBar(type, u"", u"12", true), u"") << int{type};
  }
}

TEST(ModcodeBarre, WhatCannotBeEncodedGivesNothing) {
  EXPECT_EQ(CodeBar(1, u"abc", u"", false), u"");
  EXPECT_EQ(CodeBar(4, u"12a", u"", false), u"");
  EXPECT_EQ(CodeBar(5, u"é", u"", false), u"");
  EXPECT_EQ(CodeBar(2, u"12a", u"", false), u"");
  EXPECT_EQ(CodeBar(3, u"12a", u"", false), u"");
}

TEST(ModcodeBarre, AShortEanSourceIsFilledWithZerosInFront) {
  EXPECT_EQ(ean13(u"1234"), u"0AAAAAA*abcdei+");
  EXPECT_EQ(ean13(u"1"), EAN13(u"000000000001"));
  EXPECT_EQ(ean13(u"12345678901"), EAN13(u"012345678901"));
  EXPECT_EQ(ean13(u"123456789012"), EAN13(u"123456789012"));
  EXPECT_EQ(ean8(u"1"), EAN8(u"0000001"));
  EXPECT_EQ(ean8(u"123456"), EAN8(u"0123456"));
  EXPECT_EQ(ean8(u"1234567"), u":BCDE*fgha+");
}

TEST(ModcodeBarre, WhatIsTooLongForEanBecomesTheAddOn) {
  const struct {
    Text overflow;
    Text addOn;
  } rows[] = {
      {u"3", u"03"},         {u"34", u"34"},
      {u"345", u"00345"},    {u"3456", u"03456"},
      {u"34567", u"34567"},  {u"345678", u"34567"},
      {u"34567x", u"34567"}, {u"345671234567890", u"34567"},
  };
  for (const auto& row : rows) {
    // What the add-on field holds is replaced, whatever it is.
    for (const Text field : {u"", u"99", u"98765", u"x"}) {
      EXPECT_EQ(ean13(u"123456789012" + row.overflow, field),
                EAN13(u"123456789012") + EANAddOn(row.addOn));
      EXPECT_EQ(ean8(u"1234567" + row.overflow, field), EAN8(u"1234567") + EANAddOn(row.addOn));
    }
  }
  EXPECT_EQ(ean13(u"123456789012x", u"99"), EAN13(u"123456789012"));
}

TEST(ModcodeBarre, TheAddOnIsFilledToTwoOrFiveDigitsOrCut) {
  const struct {
    Text field;
    Text addOn;
  } rows[] = {
      {u"7", u"07"},          {u"12", u"12"},        {u"123", u"00123"},
      {u"1234", u"01234"},    {u"12345", u"12345"},  {u"123456", u"12345"},
      {u"1234567", u"12345"}, {u"12345x", u"12345"}, {u"0", u"00"},
  };
  for (const auto& row : rows) {
    const Text part = EANAddOn(row.addOn);
    EXPECT_FALSE(part.empty());
    EXPECT_EQ(ean13(u"1234", row.field), u"0AAAAAA*abcdei+" + part);
    EXPECT_EQ(ean8(u"1234567", row.field), u":BCDE*fgha+" + part);
  }
  EXPECT_EQ(ean13(u"1234", u"12"), u"0AAAAAA*abcdei+[B\\C");
}

TEST(ModcodeBarre, AnAddOnThatIsNoNumberIsLeftOut) {
  for (const Text field : {u"x", u"1x", u"x12", u"1234x", u" ", u"-1"}) {
    EXPECT_EQ(ean13(u"1234", field), u"0AAAAAA*abcdei+");
    EXPECT_EQ(ean8(u"1234567", field), u":BCDE*fgha+");
  }
}

TEST(ModcodeBarre, AValidAddOnStandsAloneWhereTheEanCannotBeEncoded) {
  EXPECT_EQ(ean13(u"12x4", u"12"), u"[B\\C");
  EXPECT_EQ(ean8(u"x", u"7"), EANAddOn(u"07"));
  EXPECT_EQ(ean13(u"12345678901x12"), u"[B\\C");
}

TEST(ModcodeBarre, EveryCharacterIsInTheRangesOfTheFonts) {
  for (std::uint8_t type = 1; type <= 5; ++type) {
    for (std::uint32_t i = 1; i < 3000; ++i) {
      Text source;
      for (std::uint64_t rest = i * 2'654'435'761ULL; rest > 0; rest /= 10) {
        source += static_cast<char16_t>(u'0' + rest % 10);
      }
      const Text result = CodeBar(type, source, u"12", true);
      EXPECT_FALSE(result.empty());
      for (const char16_t c : result) {
        EXPECT_TRUE((c >= 32 && c <= 126) || (c >= 195 && c <= 206)) << int{c};
      }
    }
  }
}

// --- What nobody types --------------------------------------------------------------------------

namespace {

constexpr char16_t kHighSurrogate = 0xD83D;
constexpr char16_t kLowSurrogate = 0xDE00;

bool isAsciiDigit(unsigned code) { return code >= '0' && code <= '9'; }

}  // namespace

// Halves of surrogate pairs are among them.
TEST(ModcodeBarre, OfAllCharactersOnlyTheTenDigitsAreDigits) {
  for (unsigned code = 0; code <= 0xFFFF; ++code) {
    const Text one(1, static_cast<char16_t>(code));
    const bool isDigit = isAsciiDigit(code);
    ASSERT_EQ(ean13(one), isDigit ? EAN13(Text(11, u'0') + one) : Text()) << code;
    ASSERT_EQ(ean8(one), isDigit ? EAN8(Text(6, u'0') + one) : Text()) << code;
    ASSERT_EQ(ean13(u"1234", one), u"0AAAAAA*abcdei+" + (isDigit ? EANAddOn(u"0" + one) : Text()))
        << code;
    ASSERT_EQ(ean8(u"1234567" + one), u":BCDE*fgha+" + (isDigit ? EANAddOn(u"0" + one) : Text()))
        << code;
    for (const bool withCheck : {false, true}) {
      ASSERT_EQ(Interleaved2of5(one, withCheck).empty(), !isDigit) << code;
      ASSERT_EQ(Interleaved2of5(u"12" + one + u"3", withCheck).empty(), !isDigit) << code;
    }
  }
}

TEST(ModcodeBarre, AZeroCharacterOrHalfAPairNeitherEndsATextNorPassesForADigit) {
  for (const char16_t bad : {u'\0', kHighSurrogate, kLowSurrogate}) {
    for (std::size_t place = 0; place < 12; ++place) {
      Text source = u"123456789012";
      source[place] = bad;
      EXPECT_EQ(ean13(source), u"") << place;
      EXPECT_EQ(ean13(source, u"12"), u"[B\\C") << place;
      EXPECT_EQ(CodeBar(kInterleaved2of5, source, u"", false), u"") << place;
      EXPECT_EQ(CodeBar(kCode39, source, u"", false), u"") << place;
      EXPECT_EQ(CodeBar(kCode128, source, u"", false), u"") << place;
    }
    for (std::size_t place = 0; place < 7; ++place) {
      Text source = u"1234567";
      source[place] = bad;
      EXPECT_EQ(ean8(source), u"") << place;
    }
    for (std::size_t length = 1; length <= 5; ++length) {
      for (std::size_t place = 0; place < length; ++place) {
        Text addOn(length, u'1');
        addOn[place] = bad;
        EXPECT_EQ(ean13(u"1234", addOn), u"0AAAAAA*abcdei+") << length << ' ' << place;
      }
    }
    EXPECT_EQ(ean13(u"1234", u"12345" + Text(1, bad)), u"0AAAAAA*abcdei+" + EANAddOn(u"12345"));
  }
  const Text pair = {kHighSurrogate, kLowSurrogate};
  for (std::uint8_t type = 1; type <= 5; ++type) {
    EXPECT_EQ(CodeBar(type, pair, pair, true), u"") << int{type};
  }
}

TEST(ModcodeBarre, AVeryLongTextIsEncodedByItsFirstDigitsOrWhole) {
  constexpr std::size_t kLength = 100'000;
  Text digits;
  for (std::size_t i = 0; i < kLength; ++i) digits += static_cast<char16_t>(u'0' + (i + 1) % 10);
  const Text both = EAN13(u"123456789012") + EANAddOn(u"34567");
  EXPECT_EQ(ean13(digits), both);
  EXPECT_EQ(ean13(digits.substr(0, 17) + Text(kLength, u'x'), digits), both);
  EXPECT_EQ(ean13(u"123456789012", digits.substr(2)), both);
  EXPECT_EQ(ean8(digits), EAN8(u"1234567") + EANAddOn(u"89012"));
  EXPECT_EQ(ean8(u"1", Text(kLength, u'x')), EAN8(u"0000001"));
  EXPECT_EQ(ean13(Text(kLength, u'x')), u"");

  const Text whole = Interleaved2of5(digits, false);
  ASSERT_EQ(whole.size(), kLength / 2 + 2);
  for (std::size_t i = 0; i < kLength; i += 2) {
    ASSERT_EQ(whole[1 + i / 2], Interleaved2of5(digits.substr(i, 2), false)[1]) << i;
  }
  EXPECT_EQ(Interleaved2of5(digits, true).size(), kLength / 2 + 3);
  EXPECT_EQ(Interleaved2of5(digits + u"x", false), u"");
  EXPECT_EQ(Interleaved2of5(u"x" + digits, true), u"");
}

TEST(ModcodeBarre, ASymbolTakesThePlaceOfTheOneBefore) {
  const struct {
    std::uint8_t type;
    Text source;
    Text addOn;
  } rows[] = {{1, u"TAVROLLO", u""}, {2, u"978020137962", u"51999"},
              {2, u"x", u"51999"},   {2, u"1234", u"x"},
              {3, u"9638507", u"1"}, {3, u"963850x", u""},
              {4, u"1234567", u""},  {4, u"12x", u""},
              {5, u"Ab123456", u""}, {5, u"é", u""},
              {1, u"abc", u""},      {9, u"1", u""},
              {1, u"", u""}};
  Text result;
  for (const auto& before : rows) {
    for (const auto& row : rows) {
      for (const bool withCheck : {false, true}) {
        CodeBarInto(result, before.type, before.source, before.addOn, withCheck);
        CodeBarInto(result, row.type, row.source, row.addOn, withCheck);
        ASSERT_EQ(result, CodeBar(row.type, row.source, row.addOn, withCheck))
            << int{row.type} << testing::PrintToString(row.source);
      }
    }
  }
}

TEST(ModcodeBarre, ATextWithRoomIsNotAllocatedAgain) {
  Text result(100, u' ');
  const char16_t* const room = result.data();
  for (const std::uint8_t type : {kCode39, kEan13, kEan8, kInterleaved2of5, kCode128}) {
    CodeBarInto(result, type, u"12345678901234567", u"12", true);
    EXPECT_FALSE(result.empty()) << int{type};
    EXPECT_EQ(result.data(), room) << int{type};
  }
}
