// SPDX-License-Identifier: GPL-3.0-or-later
#include "text/CaseFold.h"

#include <gtest/gtest.h>

TEST(ToLowerAscii, TouchesTheLettersAToZAlone) {
  EXPECT_EQ(toLowerAscii("Az @[`{\xC3\x89 1"), "az @[`{\xC3\x89 1");
}

TEST(CaseFold, CapitalsBecomeSmallLettersInEveryAlphabet) {
  const struct {
    Text text;
    Text lower;
  } rows[] = {
      {u"", u""},
      {u"RunApp_|_PLAN.pdf 09@[`{", u"runapp_|_plan.pdf 09@[`{"},
      {u"ÉÀÇÔÜ×Þ", u"éàçôü×þ"},
      {u"ŒŸŽ", u"œÿž"},
      {u"ŁŃĄ", u"łńą"},
      {u"ΑΣΩ", u"ασω"},
      {u"ЖЯЁ", u"жяё"},
      {u"Ǆǅ", u"ǆǆ"},
      {u"İ", u"i"},
      {u"ẞ", u"ß"},
      {u"\u2126\u212A\u212B", u"ωkå"},
      {u"ＡＺ", u"ａｚ"},
  };
  for (const auto& row : rows) EXPECT_EQ(toLower(row.text), row.lower);
}

TEST(CaseFold, EverythingElseStays) {
  for (const Text text : {u"éßœąі", u"ā", u"ı", u"漢字", u"\U0001F600", u"\U00010400"}) {
    EXPECT_EQ(toLower(text), text);
  }
}

TEST(CaseFold, ASecondTimeChangesNothingAndTheLengthStays) {
  Text every;
  for (int unit = 0; unit < 0x10000; ++unit) every += static_cast<char16_t>(unit);
  const Text lower = toLower(every);
  EXPECT_EQ(lower.size(), every.size());
  EXPECT_EQ(toLower(lower), lower);
}
