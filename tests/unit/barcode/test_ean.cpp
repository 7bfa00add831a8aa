// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include "barcode/ModcodeBarre.h"

using ModcodeBarre::EAN13;
using ModcodeBarre::EAN8;
using ModcodeBarre::EANAddOn;

namespace {

// Numbers by which set A is chosen, one list for each digit's place.
using Places = std::vector<std::string_view>;

const Places kPlaces13 = {"0123456789", "0123", "0478", "01459", "02567", "03689"};
const Places kPlaces5 = {"456789", "123569", "023678", "013489", "012457"};

// `digits` as characters of the sets A and B, chosen by `selector`.
Text inPlaces(TextView digits, const Places& places, char selector) {
  Text text;
  for (std::size_t i = 0; i < digits.size(); ++i) {
    const bool setA = places[i].find(selector) != std::string_view::npos;
    text += static_cast<char16_t>((setA ? u'A' : u'K') + (digits[i] - u'0'));
  }
  return text;
}

Text withSeparators(const Text& characters) {
  Text text = u"[";
  for (std::size_t i = 0; i < characters.size(); ++i) {
    if (i > 0) text += u'\\';
    text += characters[i];
  }
  return text;
}

Text fiveDigits(int number) {
  Text text;
  for (int power = 10'000; power > 0; power /= 10) {
    text += static_cast<char16_t>(u'0' + number / power % 10);
  }
  return text;
}

// The weighted sum of a whole number, its check digit included: a multiple of ten.
int checkSum(const Text& digits) {
  int sum = 0;
  for (std::size_t i = 0; i < digits.size(); ++i) {
    const bool fromRightOdd = (digits.size() - i) % 2 == 1;
    sum += (fromRightOdd ? 1 : 3) * (digits[i] - u'0');
  }
  return sum;
}

const Text kNotDigits[] = {u"/", u":", u"A", u" ", u"é", u"\t", u"\u0660", u"\uFF11"};

}  // namespace

TEST(Ean13, KnownNumbers) {
  const struct {
    Text digits;
    Text result;
  } rows[] = {
      {u"000000001234", u"0AAAAAA*abcdei+"}, {u"000000000000", u"0AAAAAA*aaaaaa+"},
      {u"400638133393", u"4AKGDSL*dddjdb+"}, {u"978020137962", u"9HSKCKB*dhjgce+"},
      {u"590123412345", u"5JKLCDO*bcdefh+"}, {u"999999999999", u"9JTTJTJ*jjjjje+"},
  };
  for (const auto& row : rows) EXPECT_EQ(EAN13(row.digits), row.result);
}

TEST(Ean13, TheFirstDigitChoosesTheSetsOfTheNextSix) {
  for (char first = '0'; first <= '9'; ++first) {
    for (const Text rest : {u"000000", u"123456", u"789012", u"345678", u"999999"}) {
      const Text digits = static_cast<char16_t>(first) + rest + u"00000";
      const Text result = EAN13(digits);
      ASSERT_EQ(result.size(), 15U);
      EXPECT_EQ(result[0], static_cast<char16_t>(first));
      EXPECT_EQ(result.substr(1, 6), inPlaces(rest, kPlaces13, first)) << first;
      EXPECT_EQ(result.substr(7, 6), u"*aaaaa");
      EXPECT_EQ(result[14], u'+');
    }
  }
}

TEST(Ean13, EachDigitHasItsCharacterInEachSet) {
  for (char16_t d = 0; d <= 9; ++d) {
    const Text result = EAN13(u"1" + Text(11, static_cast<char16_t>(u'0' + d)));
    const char16_t a = static_cast<char16_t>(u'A' + d);
    const char16_t b = static_cast<char16_t>(u'K' + d);
    const char16_t c = static_cast<char16_t>(u'a' + d);
    EXPECT_EQ(result.substr(0, 13), (Text{u'1', a, a, b, a, b, b, u'*', c, c, c, c, c}));
  }
}

TEST(Ean13, TheCheckDigitCountsEveryPlace) {
  for (std::size_t place = 0; place < 12; ++place) {
    for (char16_t d = 0; d <= 9; ++d) {
      Text digits(12, u'0');
      digits[place] = static_cast<char16_t>(u'0' + d);
      const Text result = EAN13(digits);
      ASSERT_EQ(result.size(), 15U);
      const Text whole = digits + static_cast<char16_t>(result[13] - u'a' + u'0');
      EXPECT_EQ(checkSum(whole) % 10, 0) << place;
    }
  }
}

TEST(Ean13, TakesTwelveDigitsAndNothingElse) {
  for (const Text digits : {u"", u"1", u"12345678901", u"1234567890123"}) {
    EXPECT_EQ(EAN13(digits), u"");
  }
  for (std::size_t place = 0; place < 12; ++place) {
    for (const Text& other : kNotDigits) {
      EXPECT_EQ(EAN13(Text(12, u'1').replace(place, 1, other)), u"");
    }
  }
}

TEST(Ean8, KnownNumbers) {
  const struct {
    Text digits;
    Text result;
  } rows[] = {
      {u"1234567", u":BCDE*fgha+"},
      {u"0000000", u":AAAA*aaaa+"},
      {u"9638507", u":JGDI*fahe+"},
      {u"9999999", u":JJJJ*jjjf+"},
  };
  for (const auto& row : rows) EXPECT_EQ(EAN8(row.digits), row.result);
}

TEST(Ean8, EachDigitHasItsCharacterInBothHalves) {
  for (char16_t d = 0; d <= 9; ++d) {
    const Text result = EAN8(Text(7, static_cast<char16_t>(u'0' + d)));
    const char16_t a = static_cast<char16_t>(u'A' + d);
    const char16_t c = static_cast<char16_t>(u'a' + d);
    EXPECT_EQ(result.substr(0, 9), (Text{u':', a, a, a, a, u'*', c, c, c}));
  }
}

TEST(Ean8, TheCheckDigitCountsEveryPlace) {
  for (std::size_t place = 0; place < 7; ++place) {
    for (char16_t d = 0; d <= 9; ++d) {
      Text digits(7, u'0');
      digits[place] = static_cast<char16_t>(u'0' + d);
      const Text result = EAN8(digits);
      ASSERT_EQ(result.size(), 11U);
      const Text whole = digits + static_cast<char16_t>(result[9] - u'a' + u'0');
      EXPECT_EQ(checkSum(whole) % 10, 0) << place;
    }
  }
}

TEST(Ean8, TakesSevenDigitsAndNothingElse) {
  for (const Text digits : {u"", u"1", u"123456", u"12345678"}) EXPECT_EQ(EAN8(digits), u"");
  for (std::size_t place = 0; place < 7; ++place) {
    for (const Text& other : kNotDigits) {
      EXPECT_EQ(EAN8(Text(7, u'1').replace(place, 1, other)), u"");
    }
  }
}

TEST(EanAddOn, KnownNumbers) {
  const struct {
    Text digits;
    Text result;
  } rows[] = {
      {u"12", u"[B\\C"},
      {u"13", u"[B\\N"},
      {u"14", u"[L\\E"},
      {u"15", u"[L\\P"},
      {u"00", u"[A\\A"},
      {u"99", u"[T\\T"},
      {u"52495", u"[P\\C\\O\\J\\F"},
      {u"00000", u"[K\\K\\A\\A\\A"},
      {u"51999", u"[F\\B\\T\\J\\T"},
  };
  for (const auto& row : rows) EXPECT_EQ(EANAddOn(row.digits), row.result);
}

TEST(EanAddOn, TheRemainderByFourChoosesTheSetsOfTwoDigits) {
  const Places places = {"01", "02"};
  for (int number = 0; number < 100; ++number) {
    const Text digits = fiveDigits(number).substr(3);
    const char remainder = static_cast<char>('0' + number % 4);
    EXPECT_EQ(EANAddOn(digits), withSeparators(inPlaces(digits, places, remainder))) << number;
  }
}

TEST(EanAddOn, TheCheckValueChoosesTheSetsOfFiveDigits) {
  for (int number = 0; number < 100'000; number += 7) {
    const Text digits = fiveDigits(number);
    const auto d = [&digits](std::size_t i) { return digits[i - 1] - u'0'; };
    const int check = (3 * (d(1) + d(3) + d(5)) + 9 * d(2) + 9 * d(4)) % 10;
    const Text expected =
        withSeparators(inPlaces(digits, kPlaces5, static_cast<char>('0' + check)));
    ASSERT_EQ(EANAddOn(digits), expected) << number;
  }
}

TEST(EanAddOn, TakesTwoOrFiveDigitsAndNothingElse) {
  for (const Text digits : {u"", u"1", u"123", u"1234", u"123456"}) {
    EXPECT_EQ(EANAddOn(digits), u"");
  }
  for (const std::size_t count : {2U, 5U}) {
    for (std::size_t place = 0; place < count; ++place) {
      for (const Text& other : kNotDigits) {
        EXPECT_EQ(EANAddOn(Text(count, u'1').replace(place, 1, other)), u"");
      }
    }
  }
}
