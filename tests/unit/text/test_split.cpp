// SPDX-License-Identifier: GPL-3.0-or-later
#include "text/Split.h"

#include <gtest/gtest.h>

using Texts = std::vector<Text>;
using Views = std::vector<std::string_view>;

TEST(Split, CutsAtEverySeparatorFromLeftToRight) {
  const struct {
    Text text;
    Texts pieces;
  } rows[] = {
      {u"", {u""}},
      {u"runapp", {u"runapp"}},
      {u"runapp_|_plan.pdf_|_", {u"runapp", u"plan.pdf", u""}},
      {u"_|_", {u"", u""}},
      {u"_|_a_|__|_b", {u"", u"a", u"", u"b"}},
      {u"a_|_|_b", {u"a", u"|_b"}},
      {u"a_|b", {u"a_|b"}},
  };
  for (const auto& row : rows) EXPECT_EQ(split(row.text, kFieldSeparator), row.pieces);
}

TEST(Split, CutsBytesInTheSameWay) {
  EXPECT_EQ(split(std::string_view("a_|_\xE9_|_"), "_|_"), (Views{"a", "\xE9", ""}));
  EXPECT_EQ(split(std::string_view(), "_|_"), Views{""});
  EXPECT_EQ(split(std::string_view("a\tb"), "\t"), (Views{"a", "b"}));
}

TEST(Split, ReplacesEveryOccurrenceOfACharacter) {
  EXPECT_EQ(replaceAll(u"/a//b/", u'/', u'\\'), u"\\a\\\\b\\");
  EXPECT_EQ(replaceAll(u"", u'/', u'\\'), u"");
}

TEST(Split, TrimTakesBlanksAndNothingElseFromBothEnds) {
  EXPECT_EQ(trim(u"  a b  "), u"a b");
  EXPECT_EQ(trim(u"   "), u"");
  EXPECT_EQ(trim(u""), u"");
  EXPECT_EQ(trim(u"\ta\r\n"), u"\ta\r\n");
  EXPECT_EQ(trim(u"\u00A0a\u00A0"), u"\u00A0a\u00A0");
}

TEST(Split, TrimLineTakesBlanksTabsAndCarriageReturnsFromBothEnds) {
  EXPECT_EQ(trimLine(TextView(u" \t\ra\t b\r \t")), u"a\t b");
  EXPECT_EQ(trimLine(TextView(u"\n\u00A0\n")), u"\n\u00A0\n");
  EXPECT_EQ(trimLine(TextView()), u"");
  EXPECT_EQ(trimLine(std::string_view("\r\t \xE9 a \t\r")), "\xE9 a");
  EXPECT_EQ(trimLine(std::string_view(" \t\r")), "");
}

TEST(Split, LinesEndWithLfOrCrLfAndTheLastMayLackItsEnd) {
  const struct {
    std::string_view bytes;
    Views lines;
  } rows[] = {
      {"", {}},
      {"a", {"a"}},
      {"a\r\nb\nc", {"a", "b", "c"}},
      {"a\r\nb\r\n", {"a", "b"}},
      {"\n\r\n", {"", ""}},
      {"a\rb\n", {"a\rb"}},
      {"a\r\r\n", {"a\r"}},
  };
  for (const auto& row : rows) EXPECT_EQ(splitLines(row.bytes), row.lines);
}

TEST(Split, EveryKindOfLineBreakBecomesALineFeed) {
  EXPECT_EQ(withPlainLineBreaks(u"a\r\nb\nc\rd"), u"a\nb\nc\nd");
  EXPECT_EQ(withPlainLineBreaks(u"\r\r\n\n"), u"\n\n\n");
  EXPECT_EQ(withPlainLineBreaks(u"a\r"), u"a\n");
  EXPECT_EQ(withPlainLineBreaks(u""), u"");
}
