// SPDX-License-Identifier: GPL-3.0-or-later
#include "text/StoredText.h"

#include <gtest/gtest.h>

#include <random>

#include "text/AnsiCodePage.h"

TEST(StoredText, IsWrittenInTheAnsiCodePageWhereItCanBe) {
  EXPECT_EQ(toStoredText(u"C:\\Élèves\\3 €"), "C:\\\xC9l\xE8ves\\3 \x80");
  EXPECT_EQ(toStoredText(u"/home/marie"), "/home/marie");
  EXPECT_EQ(toStoredText(u""), "");
}

TEST(StoredText, IsWrittenInUtf8WhereTheCodePageLacksACharacter) {
  EXPECT_EQ(toStoredText(u"/home/Łukasz/é"), "/home/\xC5\x81ukasz/\xC3\xA9");
  EXPECT_EQ(toStoredText(u"\U0001F600"), "\xF0\x9F\x98\x80");
}

TEST(StoredText, IsWrittenInUtf8WhereItsAnsiBytesWouldBeMisread) {
  EXPECT_EQ(toStoredText(u"Ã©"), "\xC3\x83\xC2\xA9");
  EXPECT_EQ(fromStoredText(toStoredText(u"Ã©")), u"Ã©");
}

TEST(StoredText, IsReadAsUtf8OnlyWhenItIsThat) {
  EXPECT_EQ(fromStoredText("caf\xC3\xA9"), u"café");
  EXPECT_EQ(fromStoredText("caf\xE9"), u"café");
  EXPECT_EQ(fromStoredText("\xC3\xA9 \xE9"), u"Ã© é");
  EXPECT_EQ(fromStoredText("cafe"), u"cafe");
  EXPECT_EQ(fromStoredText(""), u"");
}

TEST(StoredText, AnyTextOfWholeCharactersSurvivesTheRoundTrip) {
  const Text likely = u"aé€ÃÂ©\u0081Łш漢/\\, \"";
  for (unsigned seed = 0; seed < 10'000; ++seed) {
    std::mt19937 random(seed);
    Text text;
    for (std::size_t length = random() % 12; length > 0; --length) {
      text += likely[random() % likely.size()];
    }
    ASSERT_EQ(fromStoredText(toStoredText(text)), text) << "seed " << seed;
  }
}
