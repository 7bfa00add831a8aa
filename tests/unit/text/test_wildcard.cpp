// SPDX-License-Identifier: GPL-3.0-or-later
#include "text/Wildcard.h"

#include <chrono>
#include <gtest/gtest.h>

#include "text/Utf.h"

namespace {

struct Row {
  Text name;
  Text pattern;
};

const Row kMatching[] = {
    {u"cookies.sqlite", u"cookies.sqlite"},
    {u"Cookies.SQLite", u"cookies.sqlite"},
    {u"cookies.sqlite", u"COOKIES.SQLITE"},
    {u"ÉTÉ.txt", u"été.TXT"},
    {u"a", u"*"},
    {u"", u"*"},
    {u"", u"**"},
    {u"cookies.sqlite", u"*.sqlite"},
    {u".sqlite", u"*.sqlite"},
    {u"a.b.sqlite", u"*.sqlite"},
    {u"cookies.sqlite-wal", u"*cookies*"},
    {u"cookies.sqlite", u"c*s.s*e"},
    {u"abcabd", u"*abd"},
    {u"aaab", u"a*ab"},
    {u"mississippi", u"m*iss*ppi"},
    {u"mississippi", u"*s*s*s*s*"},
    {u"abc", u"a?c"},
    {u"aéc", u"a?c"},
    {u"abc", u"???"},
    {u"abc", u"?*"},
    {u"abc", u"*?"},
    {u"a*c", u"a*c"},
    {u"\xD83D\xDE00.txt", u"?.txt"},
    {u"\xD83D\xDE00", u"*?"},
    {u"\xDCFF.txt", u"?.txt"},
    {u"a[1]", u"a[1]"},
};

const Row kOthers[] = {
    {u"cookies.sqlite-wal", u"cookies.sqlite"},
    {u"xcookies.sqlite", u"cookies.sqlite"},
    {u"cookies.sqlit", u"cookies.sqlite"},
    {u"", u"?"},
    {u"", u"a"},
    {u"a", u"b"},
    {u"ac", u"a?c"},
    {u"abbc", u"a?c"},
    {u"ab", u"???"},
    {u"abcd", u"???"},
    {u"cookies.sqlite", u"*.txt"},
    {u"abc", u"*b"},
    {u"mississippi", u"*s*s*s*s*s*"},
    {u"\xD83D\xDE00", u"??"},
    {u"\xD83D\xDE00", u"*??"},
    {u"a1", u"a[1]"},
    {u"cookiesx", u"cookies.*"},
    {u"xcookies", u"cookies.*"},
};

}  // namespace

TEST(Wildcard, StarsAndQuestionMarksStandForCharacters) {
  for (const Row& row : kMatching) {
    EXPECT_TRUE(matchesPattern(row.name, row.pattern))
        << toUtf8(row.name) << " " << toUtf8(row.pattern);
  }
  for (const Row& row : kOthers) {
    EXPECT_FALSE(matchesPattern(row.name, row.pattern))
        << toUtf8(row.name) << " " << toUtf8(row.pattern);
  }
}

TEST(Wildcard, NoPatternAndStarDotStarTakeEveryName) {
  for (const Text name : {u"", u"a", u"a.b", u".a", u"a.", u"a.b.c", u"\xDC80"}) {
    EXPECT_TRUE(matchesPattern(name, u""));
    EXPECT_TRUE(matchesPattern(name, u"*.*"));
  }
}

TEST(Wildcard, AnyEndingIncludesNone) {
  EXPECT_TRUE(matchesPattern(u"Cookies", u"*cookies*.*"));
  EXPECT_TRUE(matchesPattern(u"cookies", u"cookies.*"));
  EXPECT_TRUE(matchesPattern(u"cookies.sqlite", u"cookies.*"));
  EXPECT_TRUE(matchesPattern(u"cookies.", u"cookies.*"));
  EXPECT_FALSE(matchesPattern(u"cookies", u"cookies.?*"));
}

TEST(Wildcard, ManyStarsTakeNoTimeToSpeakOf) {
  Text pattern;
  for (int i = 0; i < 50; ++i) pattern += u"*a";
  const auto begin = std::chrono::steady_clock::now();
  EXPECT_FALSE(matchesPattern(Text(2000, u'a') + u"b", pattern + u"c"));
  EXPECT_TRUE(matchesPattern(Text(2000, u'a') + u"b", pattern + u"b"));
  EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(5));
}
