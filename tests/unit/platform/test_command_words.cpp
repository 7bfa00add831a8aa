// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include "platform/linux/CommandWords.h"

namespace {

struct Row {
  Text text;
  std::vector<Text> words;
};

const Row kRows[] = {
    {u"", {}},
    {u" \t ", {}},
    {u"a", {u"a"}},
    {u"  a\t b  ", {u"a", u"b"}},
    {u"'a b' c", {u"a b", u"c"}},
    {u"\"a b\" c", {u"a b", u"c"}},
    {u"a'b c'd\"e f\"g", {u"ab cde fg"}},
    {u"''", {u""}},
    {u"a \"\" b", {u"a", u"", u"b"}},
    {u"'\\n\"$'", {u"\\n\"$"}},
    {u"\"\\\"\\\\\\$\\`\"", {u"\"\\$`"}},
    {u"\"a\\b'\"", {u"a\\b'"}},
    {u"a\\ b \\' \\\\", {u"a b", u"'", u"\\"}},
    {u"a\\", {u"a\\"}},
    {u"'a b", {u"a b"}},
    {u"\"a b", {u"a b"}},
    {u"\"a\\", {u"a\\"}},
    {u"'", {u""}},
    {u"é 'à ç' 日本", {u"é", u"à ç", u"日本"}},
    {u"$HOME ~ * `ls` $(ls) a;b | c > d # e",
     {u"$HOME", u"~", u"*", u"`ls`", u"$(ls)", u"a;b", u"|", u"c", u">", u"d", u"#", u"e"}},
    {u"a\nb", {u"a\nb"}},
};

TEST(CommandWords, AreSplitAsAShellQuotesWithoutExpansion) {
  for (std::size_t i = 0; i < std::size(kRows); ++i) {
    EXPECT_EQ(splitCommandWords(kRows[i].text), kRows[i].words) << "row " << i;
  }
}

TEST(CommandWords, HarmlessWordsStayBare) {
  for (const TextView word : {u"a", u"/home/é/b.txt", u"--size=3", u"a@b:1,2+3%4_5"}) {
    EXPECT_EQ(quoteWord(word), word);
  }
}

TEST(CommandWords, OtherWordsAreQuoted) {
  EXPECT_EQ(quoteWord(u""), u"''");
  EXPECT_EQ(quoteWord(u"a b"), u"'a b'");
  EXPECT_EQ(quoteWord(u"it's"), u"'it'\\''s'");
}

TEST(CommandWords, AQuotedWordComesBackAsItWas) {
  for (const Text& word : {Text(u""), Text(u"a b"), Text(u"it's \"q\" \\ \t\n"), Text(u"$a`b`"),
                           Text(u"~"), Text(u"*?[a]{b}"), Text(u"é日"), Text(u"#a&b;c|d<e>(f)!")}) {
    EXPECT_EQ(splitCommandWords(u"x " + quoteWord(word) + u" y"),
              (std::vector<Text>{u"x", word, u"y"}));
  }
}

TEST(CommandWords, AFileNameIsNoOption) {
  EXPECT_EQ(guardDash(u"-rf"), u"./-rf");
  EXPECT_EQ(guardDash(u"a-b"), u"a-b");
  EXPECT_EQ(guardDash(u"/-a"), u"/-a");
  EXPECT_EQ(guardDash(u""), u"");
}

}  // namespace
