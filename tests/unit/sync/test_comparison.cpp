// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>
#include <limits>

#include "SyncSupport.h"
#include "sync/Comparison.h"

namespace {

using Rows = std::vector<std::string>;
using Files = std::vector<std::pair<std::string, std::int64_t>>;

Rows compare(const Listing& source, const Listing& backup) {
  return rowsOf(source, backup, compareListings(source, backup).rows);
}

struct TimeRow {
  std::int64_t source;
  std::int64_t backup;
  const char* expected;  // "" for identical
};

constexpr TimeRow kTimes[] = {
    {1000, 1000, ""},
    {1000, 1005, ""},
    {1000, 1006, "3 a a"},
    {1005, 1000, ""},
    {1006, 1000, "1 a a"},
    {-3, 3, "3 a a"},
    {-2, 3, ""},
    {std::numeric_limits<std::int64_t>::min(), std::numeric_limits<std::int64_t>::max(), "3 a a"},
    {std::numeric_limits<std::int64_t>::max(), std::numeric_limits<std::int64_t>::min(), "1 a a"},
};

TEST(Comparison, MoreThanFiveSecondsMakeARow) {
  for (const TimeRow& row : kTimes) {
    const Rows rows = compare(listingOf({{"a", row.source}}), listingOf({{"a", row.backup}}));
    const Rows expected = *row.expected ? Rows{row.expected} : Rows{};
    EXPECT_EQ(rows, expected) << row.source << " " << row.backup;
  }
}

TEST(Comparison, TheSizeIsNotCompared) {
  Listing source = listingOf({{"a", 1}});
  source.files[0].state.size = 99;
  EXPECT_TRUE(compare(source, listingOf({{"a", 1}})).empty());
}

TEST(Comparison, SourceRowsComeInTheirOrderThenThoseOfTheBackupAlone) {
  const Listing source = listingOf({{"e", 50}, {"new", 1}, {"same", 1}, {"d/old", 1}, {"b", 90}});
  const Listing backup =
      listingOf({{"z", 1}, {"b", 1}, {"same", 3}, {"d/old", 50}, {"e", 1}, {"y", 1}});
  EXPECT_EQ(compare(source, backup),
            (Rows{"1 e e", "0 new -", "3 d/old d/old", "1 b b", "2 - z", "2 - y"}));
}

TEST(Comparison, NothingIsDifferentInNothing) {
  EXPECT_TRUE(compare({}, {}).empty());
  EXPECT_EQ(compare(listingOf({{"a", 1}}), {}), Rows{"0 a -"});
  EXPECT_EQ(compare({}, listingOf({{"a", 1}})), Rows{"2 - a"});
}

TEST(Comparison, CapitalsAndSmallLettersAreTheSame) {
  EXPECT_TRUE(compare(listingOf({{"Docs/A.txt", 1}}), listingOf({{"docs/a.txt", 1}})).empty());
  EXPECT_TRUE(compare(listingOf({{"É", 1}}), listingOf({{"é", 1}})).empty());
  EXPECT_EQ(compare(listingOf({{"Docs/A", 9}}), listingOf({{"docs/a", 1}})),
            Rows{"1 Docs/A docs/a"});
  EXPECT_EQ(compare(listingOf({{"A", 1}}), listingOf({{"a", 9}})), Rows{"3 A a"});
}

TEST(Comparison, ExactlyTheSameNameComesFirst) {
  const Listing source = listingOf({{"A", 9}, {"a", 1}});
  EXPECT_EQ(compare(source, listingOf({{"a", 1}})), Rows{"0 A -"});
  EXPECT_EQ(compare(source, listingOf({{"A", 9}})), Rows{"0 a -"});
  EXPECT_TRUE(compare(source, listingOf({{"a", 1}, {"A", 9}})).empty());
  EXPECT_EQ(compare(listingOf({{"A", 1}}), listingOf({{"A", 1}, {"a", 9}})), Rows{"2 - a"});
}

TEST(Comparison, NoFileIsThePartnerOfTwo) {
  const Listing source = listingOf({{"AB", 1}, {"Ab", 1}, {"aB", 1}});
  EXPECT_EQ(compare(source, listingOf({{"ab", 1}})), (Rows{"0 Ab -", "0 aB -"}));
  EXPECT_EQ(compare(listingOf({{"ab", 1}}), source), (Rows{"2 - Ab", "2 - aB"}));
}

TEST(Comparison, NamesThatAreNoTextAreToldApart) {
  EXPECT_EQ(compare(listingOf({{"\xE9", 1}}), listingOf({{"\xE8", 1}})),
            (Rows{"0 \xE9 -", "2 - \xE8"}));
  EXPECT_TRUE(compare(listingOf({{"\xE9", 1}}), listingOf({{"\xE9", 1}})).empty());
}

TEST(Comparison, WhatTheOtherSideCouldNotReadIsNotMissing) {
  const Files files = {
      {"closed", 1}, {"closed/a", 1}, {"closed/deep/b", 1}, {"closedish", 1}, {"x/closed", 1}};
  const Rows left = {"0 closedish -", "0 x/closed -"};
  EXPECT_EQ(compare(listingOf(files), listingOf({}, {"closed"})), left);
  EXPECT_EQ(compare(listingOf(files), listingOf({}, {"Closed"})), left);
  EXPECT_EQ(compareListings(listingOf(files), listingOf({}, {"closed"})).withheld, 3u);

  const Rows right = {"2 - closedish", "2 - x/closed"};
  EXPECT_EQ(compare(listingOf({}, {"closed"}), listingOf(files)), right);
  EXPECT_EQ(compareListings(listingOf({}, {"closed"}), listingOf(files)).withheld, 3u);
}

TEST(Comparison, OfASideThatCouldNotBeReadNothingIsMissing) {
  const Listing files = listingOf({{"a", 1}, {"d/b", 1}});
  EXPECT_TRUE(compare(files, listingOf({}, {""})).empty());
  EXPECT_TRUE(compare(listingOf({}, {""}), files).empty());
}

TEST(Comparison, AnObstacleDoesNotHideWhatBothSidesHave) {
  EXPECT_EQ(compare(listingOf({{"d/a", 9}}, {"d"}), listingOf({{"d/a", 1}}, {"d"})),
            Rows{"1 d/a d/a"});
}

TEST(Comparison, WhatWasNotComparedAreWithheldFilesAndWhatCouldNotBeReadOnEitherSide) {
  const Listing source = listingOf({{"closed/a", 1}, {"b", 1}}, {"shut", "x"});
  Listing backup = listingOf({}, {"closed", "shut"});
  EXPECT_EQ(notCompared(source, backup, compareListings(source, backup)), 5u);
  for (const ObstacleKind kind : {ObstacleKind::FolderLink, ObstacleKind::Special}) {
    for (Obstacle& obstacle : backup.obstacles) obstacle.kind = kind;
    EXPECT_EQ(notCompared(source, backup, compareListings(source, backup)), 3u)
        << "what is withheld still counts, the links do not";
  }
  EXPECT_EQ(notCompared(listingOf({}), listingOf({}), {}), 0u);
}

TEST(Comparison, TheTableCanBeEmptied) {
  DifferenceTable table = compareListings(listingOf({{"a", 1}}), listingOf({}));
  table.withheld = 1;
  ViderGrille(table);
  EXPECT_TRUE(table.rows.empty());
  EXPECT_EQ(table.withheld, 0u);
}

TEST(Comparison, ACollectionTellsWhetherItHoldsAKey) {
  const NativeName a = native("a");
  FileIndex index = {{a, 1}};
  EXPECT_TRUE(CleExiste(a, index));
  EXPECT_FALSE(CleExiste(native("b"), index));
  NouvelleCollection(index);
  EXPECT_FALSE(CleExiste(a, index));
  EXPECT_TRUE(index.empty());
}

}  // namespace
