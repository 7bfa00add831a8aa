// SPDX-License-Identifier: GPL-3.0-or-later
#include "text/AnsiCodePage.h"

#include <gtest/gtest.h>

namespace {

std::string everyByte() {
  std::string bytes;
  for (int byte = 0; byte < 256; ++byte) bytes += static_cast<char>(byte);
  return bytes;
}

}  // namespace

TEST(AnsiCodePage, TheUpperControlsAreThoseOfWindows1252) {
  const Text expected = u"€\u0081‚ƒ„…†‡ˆ‰Š‹Œ\u008DŽ\u008F"
                        u"\u0090‘’“”•–—˜™š›œ\u009DžŸ";
  EXPECT_EQ(fromAnsi(everyByte().substr(0x80, 32)), expected);
  EXPECT_EQ(toAnsi(expected), everyByte().substr(0x80, 32));
}

TEST(AnsiCodePage, EveryOtherByteIsItsOwnCodePoint) {
  for (int byte = 0; byte < 256; ++byte) {
    if (byte >= 0x80 && byte <= 0x9F) continue;
    EXPECT_EQ(fromAnsi(std::string(1, static_cast<char>(byte))),
              Text(1, static_cast<char16_t>(byte)));
  }
}

TEST(AnsiCodePage, AnyByteSurvivesTheRoundTrip) {
  const Text text = fromAnsi(everyByte());
  EXPECT_EQ(text.size(), 256u);
  EXPECT_EQ(toAnsi(text), everyByte());
  EXPECT_EQ(toAnsiExactly(text), everyByte());
}

TEST(AnsiCodePage, WhatTheCodePageLacksBecomesAQuestionMark) {
  EXPECT_EQ(toAnsi(u"Łukasz"), "?ukasz");
  EXPECT_EQ(toAnsi(u"\u0080"), "?");
  EXPECT_EQ(toAnsi(u"a\U0001F600b"), "a?b");
  EXPECT_EQ(toAnsi(Text{0xD83D, u'b'}), "?b");
  EXPECT_EQ(toAnsi(Text{0xDE00, 0xD83D}), "??");
}

TEST(AnsiCodePage, TheExactConversionRefusesWhatTheCodePageLacks) {
  EXPECT_EQ(toAnsiExactly(u"Łukasz"), std::nullopt);
  EXPECT_EQ(toAnsiExactly(u"a\U0001F600b"), std::nullopt);
  EXPECT_EQ(toAnsiExactly(u"été à 3 €"), "\xE9t\xE9 \xE0 3 \x80");
  EXPECT_EQ(toAnsiExactly(u""), "");
}
