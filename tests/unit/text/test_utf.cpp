// SPDX-License-Identifier: GPL-3.0-or-later
#include "text/Utf.h"

#include <gtest/gtest.h>

#include <random>

namespace {

struct Pair {
  std::string bytes;
  Text text;
};

// The first and the last code point of each length, and both sides of the surrogates.
const Pair kWellFormed[] = {
    {"", u""},
    {"plan.pdf", u"plan.pdf"},
    {std::string(1, '\0'), Text(1, u'\0')},
    {"\x7F", u"\x7F"},
    {"\xC2\x80", u"\u0080"},
    {"\xC3\xA9", u"é"},
    {"\xC5\x81ukasz", u"Łukasz"},
    {"\xDF\xBF", u"\u07FF"},
    {"\xE0\xA0\x80", u"\u0800"},
    {"\xE2\x82\xAC", u"€"},
    {"\xED\x9F\xBF", u"\uD7FF"},
    {"\xEE\x80\x80", u"\uE000"},
    {"\xEF\xBF\xBF", u"\uFFFF"},
    {"\xF0\x90\x80\x80", u"\U00010000"},
    {"\xF0\x9F\x98\x80", u"\U0001F600"},
    {"\xF4\x8F\xBF\xBF", u"\U0010FFFF"},
};

// Unicode 15, tables 3-8 to 3-11, and sequences that end too soon.
const Pair kIllFormed[] = {
    {"\xC0\xAF\xE0\x80\xBF\xF0\x81\x82"
     "A",
     u"\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD\uFFFDA"},
    {"\xED\xA0\x80\xED\xBF\xBF\xED\xAF"
     "A",
     u"\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD\uFFFDA"},
    {"\xF4\x91\x92\x93\xFF"
     "A\x80"
     "B",
     u"\uFFFD\uFFFD\uFFFD\uFFFD\uFFFDA\uFFFDB"},
    {"\xE1\x80\xE2\xF0\x91\x92\xF1\xBF"
     "A",
     u"\uFFFD\uFFFD\uFFFD\uFFFDA"},
    {"\xE9", u"\uFFFD"},
    {"\xE2\x82", u"\uFFFD"},
    {"\xF0\x9F\x98", u"\uFFFD"},
    {"\xC1\xBF", u"\uFFFD\uFFFD"},
    {"\xF5\x80", u"\uFFFD\uFFFD"},
};

std::string randomBytes(std::mt19937& random) {
  // Mostly bytes that begin or go on with a sequence: they meet the borders.
  const std::string likely =
      "\xC3\xA9\xE2\x82\xAC\xED\xA0\x80\xF0\x9F\x98\x80\xF4\x8F\xBF\xFF\xC0z";
  std::string bytes(random() % 24, '\0');
  for (char& byte : bytes) {
    byte = random() % 4 == 0 ? static_cast<char>(random()) : likely[random() % likely.size()];
  }
  return bytes;
}

}  // namespace

TEST(Utf, WellFormedBytesAndTextsBecomeEachOther) {
  for (const auto& [bytes, text] : kWellFormed) {
    EXPECT_EQ(fromUtf8(bytes), text);
    EXPECT_EQ(toUtf8(text), bytes);
    EXPECT_EQ(fromUtf8Lossless(bytes), text);
    EXPECT_EQ(toUtf8Lossless(text), bytes);
    EXPECT_TRUE(isValidUtf8(bytes));
  }
}

TEST(Utf, EachMaximalIllFormedPartBecomesOneReplacementCharacter) {
  for (const auto& [bytes, text] : kIllFormed) {
    EXPECT_EQ(fromUtf8(bytes), text);
    EXPECT_FALSE(isValidUtf8(bytes));
  }
}

TEST(Utf, ASurrogateWithoutItsPartnerIsWrittenAsTheReplacementCharacter) {
  EXPECT_EQ(toUtf8(Text{u'a', 0xD83D, u'z'}), "a\xEF\xBF\xBDz");
  EXPECT_EQ(toUtf8(Text{0xD83D}), "\xEF\xBF\xBD");
  EXPECT_EQ(toUtf8(Text{0xDE00, 0xD83D}), "\xEF\xBF\xBD\xEF\xBF\xBD");
  EXPECT_EQ(toUtf8Lossless(Text{0xD83D}), "\xEF\xBF\xBD");
}

TEST(Utf, AResultThatIsGivenIsReplacedAndItsRoomUsedAgain) {
  Text text(100, u'x');
  std::string bytes(100, 'x');
  const auto* const textRoom = text.data();
  const auto* const bytesRoom = bytes.data();
  for (const Pair& pair : kWellFormed) {
    fromUtf8Into(text, pair.bytes);
    EXPECT_EQ(text, pair.text);
    toUtf8Into(bytes, pair.text);
    EXPECT_EQ(bytes, pair.bytes);
  }
  EXPECT_EQ(text.data(), textRoom);
  EXPECT_EQ(bytes.data(), bytesRoom);
}

TEST(Utf, TheLosslessPairCarriesEachStrayByteInALoneSurrogate) {
  EXPECT_EQ(fromUtf8Lossless("a\xFFz"), (Text{u'a', 0xDCFF, u'z'}));
  EXPECT_EQ(fromUtf8Lossless("\xE2\x82"), (Text{0xDCE2, 0xDC82}));
  EXPECT_EQ(toUtf8Lossless(Text{u'a', 0xDCFF, u'z'}), "a\xFFz");
}

TEST(Utf, AnyBytesSurviveTheLosslessRoundTrip) {
  for (unsigned seed = 0; seed < 10'000; ++seed) {
    std::mt19937 random(seed);
    const std::string bytes = randomBytes(random);
    ASSERT_EQ(toUtf8Lossless(fromUtf8Lossless(bytes)), bytes) << "seed " << seed;
    ASSERT_EQ(fromUtf8(bytes).find(u'\uFFFD') == Text::npos, isValidUtf8(bytes)) << "seed " << seed;
  }
}

TEST(Utf, BytesLookLikeUtf8WhenTheyAreValidAndNotAllAscii) {
  EXPECT_TRUE(looksLikeUtf8("caf\xC3\xA9"));
  EXPECT_FALSE(looksLikeUtf8("cafe"));
  EXPECT_FALSE(looksLikeUtf8(""));
  EXPECT_FALSE(looksLikeUtf8("caf\xE9"));
  EXPECT_FALSE(looksLikeUtf8("\xC3\xA9 \xE9"));
}
