// SPDX-License-Identifier: GPL-3.0-or-later
#include "config/ItemReader.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

std::vector<std::string> items(std::string_view bytes) {
  ItemReader reader(bytes);
  std::vector<std::string> all;
  while (const auto item = reader.next()) all.emplace_back(*item);
  return all;
}

using Items = std::vector<std::string>;

}  // namespace

TEST(ItemReader, CutsAtCommasAndLineEnds) {
  const struct {
    std::string_view bytes;
    Items items;
  } rows[] = {
      {"", {}},
      {"a\r\nb\r\n", {"a", "b"}},
      {"a\nb\n", {"a", "b"}},
      {"a\r\nb\nc", {"a", "b", "c"}},
      {"a,b\r\nc\r\n", {"a", "b", "c"}},
      {"a,\r\nb\r\n", {"a", "", "b"}},
      {",,\n", {"", "", ""}},
      {"\r\n\r\nx\r\n", {"", "", "x"}},
      {"\n\nx\n", {"", "", "x"}},
      {"a\r,b\r\n", {"a\r", "b"}},
      {"a\rb\r\n", {"a\rb"}},
      {";un commentaire \"avec\" des guillemets\r\nb\r\n",
       {";un commentaire \"avec\" des guillemets", "b"}},
  };
  for (const auto& row : rows) EXPECT_EQ(items(row.bytes), row.items);
}

TEST(ItemReader, SkipsLeadingBlanksAndKeepsTheOthers) {
  EXPECT_EQ(items("   a b  \r\n  c,   d\r\n   \r\ne\n"), (Items{"a b  ", "c", "d", "", "e"}));
  EXPECT_EQ(items("\ta\n"), Items{"\ta"});
}

TEST(ItemReader, AQuotedItemRunsToTheNextQuote) {
  const struct {
    std::string_view bytes;
    Items items;
  } rows[] = {
      {"\"a,b\"\r\nc\r\n", {"a,b", "c"}},
      {"  \"a\"  ,b\n", {"a", "b"}},
      {"\"a\r\nb\"\r\nc\n", {"a\r\nb", "c"}},
      {"\"\"\nc\n", {"", "c"}},
      {"\"a\"b\nc\n", {"a", "b", "c"}},
      {"\"a\"", {"a"}},
      {"\" a \"\n", {" a "}},
  };
  for (const auto& row : rows) EXPECT_EQ(items(row.bytes), row.items);
}

TEST(ItemReader, AnItemThatTheEndCutsOffIsNone) {
  EXPECT_EQ(items("a\r\n"), Items{"a"});
  EXPECT_EQ(items("a\r\n   "), Items{"a"});
  EXPECT_EQ(items("a\r\n\"b"), Items{"a"});
  EXPECT_EQ(items("\"b\r\nc\r\n"), Items{});
  EXPECT_EQ(items("a,"), Items{"a"});
}

TEST(ItemReader, TheEndOfTheBytesEndsTheLastLine) { EXPECT_EQ(items("a\nb"), (Items{"a", "b"})); }
