// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include "barcode/ModcodeBarre.h"

using ModcodeBarre::Code39;

TEST(Code39, StandsBetweenTwoStars) {
  EXPECT_EQ(Code39(u"AB-12"), u"*AB-12*");
  EXPECT_EQ(Code39(u""), u"**");
  EXPECT_EQ(Code39(u" "), u"* *");
}

TEST(Code39, EncodesExactlyItsFortyThreeCharacters) {
  const Text accepted = u" $%+-./0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZ";
  EXPECT_EQ(accepted.size(), 43U);
  EXPECT_EQ(Code39(accepted), u"*" + accepted + u"*");
  for (unsigned code = 0; code <= 0xFFFF; ++code) {
    const Text one(1, static_cast<char16_t>(code));
    const bool isAccepted = accepted.find(one) != Text::npos;
    EXPECT_EQ(Code39(one), isAccepted ? u"*" + one + u"*" : Text()) << code;
  }
}

TEST(Code39, OneOtherCharacterAnywhereEmptiesTheResult) {
  for (const Text text : {u"abc", u"aBC", u"AbC", u"ABc", u"A*B", u"É1", u"1\t"}) {
    EXPECT_EQ(Code39(text), u"");
  }
}

TEST(Code39, HasNoLongestText) {
  const Text text(100'000, u'Z');
  EXPECT_EQ(Code39(text), u"*" + text + u"*");
}
