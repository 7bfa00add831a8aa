// SPDX-License-Identifier: GPL-3.0-or-later
#include "text/EncodeDecodeUtf8.h"

#include <gtest/gtest.h>

#include <random>

#include "text/AnsiCodePage.h"
#include "text/Utf.h"

using namespace EncodeDecodeUtf8;

namespace {

struct Pair {
  Text byteText;
  Text text;
};

const Pair kPairs[] = {
    {u"", u""},
    {u"Ã©", u"é"},
    {u"plan.pdf_|_C:\\docs", u"plan.pdf_|_C:\\docs"},
    {u"Å\u0081ukasz", u"Łukasz"},
    {u"â‚¬", u"€"},
    {u"ðŸ˜€", u"\U0001F600"},
    {u"Ã\u00A0", u"à"},
    {u"Ã\u0081", u"Á"},  // one of the bytes that the code page leaves undefined
};

}  // namespace

TEST(EncodeDecodeUtf8, DecodesWhatWasReadByteByByte) {
  for (const auto& [byteText, text] : kPairs) EXPECT_EQ(decode(byteText), text);
}

TEST(EncodeDecodeUtf8, EncodesToOneCharacterPerByte) {
  for (const auto& [byteText, text] : kPairs) EXPECT_EQ(encode(text), byteText);
}

TEST(EncodeDecodeUtf8, EveryCodePointSurvivesTheRoundTrip) {
  for (char32_t codePoint = 1; codePoint <= 0x10FFFF; ++codePoint) {
    if (codePoint >= 0xD800 && codePoint <= 0xDFFF) continue;
    Text text;
    if (codePoint < 0x10000) {
      text = {static_cast<char16_t>(codePoint)};
    } else {
      text = {static_cast<char16_t>(0xD7C0 + (codePoint >> 10)),
              static_cast<char16_t>(0xDC00 + (codePoint & 0x3FF))};
    }
    ASSERT_EQ(decode(encode(text)), text) << "code point " << static_cast<unsigned>(codePoint);
  }
}

TEST(EncodeDecodeUtf8, DecodingTwiceGarblesWhatIsNotAscii) {
  EXPECT_EQ(decode(decode(u"Ã©")), u"\uFFFD");
  EXPECT_EQ(decode(decode(u"plan")), u"plan");
}

TEST(EncodeDecodeUtf8, AZeroEndsTheConversion) {
  const Text withZero = u"avant" + Text(1, u'\0') + u"après";
  EXPECT_EQ(decode(withZero), u"avant");
  EXPECT_EQ(encode(withZero), u"avant");
  EXPECT_EQ(decode(Text(1, u'\0') + u"a"), u"");
  EXPECT_EQ(multiByteToText(std::string("a\0b", 3), kCodePageUtf8), u"a");
  EXPECT_EQ(textToMultiByte(withZero, kCodePageAnsi), "avant");
}

TEST(EncodeDecodeUtf8, IllFormedBytesBecomeReplacementCharacters) {
  EXPECT_EQ(decode(u"é"), u"\uFFFD");
  EXPECT_EQ(decode(u"a\u00E2\u201A"), u"a\uFFFD");
}

TEST(EncodeDecodeUtf8, TheAnsiCodePageHasThreeNames) {
  EXPECT_EQ(GetACP(), 1252);
  for (const int codePage : {kCodePageAnsi, kAskForCodePage, GetACP()}) {
    EXPECT_EQ(multiByteToText("\xE9\x80", codePage), u"é€");
    EXPECT_EQ(textToMultiByte(u"é€", codePage), "\xE9\x80");
  }
}

TEST(EncodeDecodeUtf8, TheUtf8CodePageIsUsedWhenItIsAskedFor) {
  EXPECT_EQ(kCodePageUtf8, 65001);
  EXPECT_EQ(multiByteToText("\xC3\xA9", kCodePageUtf8), u"é");
  EXPECT_EQ(textToMultiByte(u"é", kCodePageUtf8), "\xC3\xA9");
}

TEST(EncodeDecodeUtf8, RemovesEveryZeroCharacter) {
  const Text zero(1, u'\0');
  Text text = zero + u"a" + zero + zero + u"b" + zero;
  removeZeroCharacters(text);
  EXPECT_EQ(text, u"ab");
}
