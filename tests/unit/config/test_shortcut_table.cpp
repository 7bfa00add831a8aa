// SPDX-License-Identifier: GPL-3.0-or-later
#include "config/ShortcutTable.h"

#include <gtest/gtest.h>

#include <limits>

namespace {

using Rows = std::vector<Shortcut>;

const Shortcut kPlan{u"000000000", u"Plan", u"C:\\plan.pdf"};
const Shortcut kSite{u"000000001", u"Site", u"webhttp://localhost"};

}  // namespace

TEST(ShortcutTable, IsEmptyAndNeverLoadedAtFirst) {
  const ShortcutTable table;
  EXPECT_EQ(table.rows(), Rows{});
  EXPECT_EQ(table.freeId(), 0);
  EXPECT_FALSE(table.wasLoaded());
}

TEST(ShortcutTable, LoadingReplacesEverything) {
  ShortcutTable table;
  table.addRow(u"x\ty\tz");
  table.load(7, {kPlan, kSite});
  EXPECT_EQ(table.rows(), (Rows{kPlan, kSite}));
  EXPECT_EQ(table.freeId(), 7);
  EXPECT_TRUE(table.wasLoaded());
}

TEST(ShortcutTable, FreeIdIsStoredAloneAsItWasRead) {
  ShortcutTable table;
  table.setFreeId(5);
  EXPECT_EQ(table.freeId(), 5);
  EXPECT_FALSE(table.wasLoaded());
  table.load(7, {kPlan});
  int changes = 0;
  table.subscribe([&] { ++changes; });
  table.setFreeId(7);
  EXPECT_EQ(changes, 0);
  for (const int read : {9, 4, 0, -3}) {
    table.setFreeId(read);
    EXPECT_EQ(table.freeId(), read);
  }
  EXPECT_EQ(changes, 4);
  EXPECT_EQ(table.rows(), Rows{kPlan});
  EXPECT_TRUE(table.wasLoaded());
}

TEST(ShortcutTable, ANewKeyHasNineDigitsAndIsGivenOnce) {
  ShortcutTable table;
  table.load(42, {});
  EXPECT_EQ(table.newKey(), u"000000042");
  EXPECT_EQ(table.freeId(), 43);
  EXPECT_EQ(table.newKey(), u"000000043");
}

TEST(ShortcutTable, DeletingNeverFreesAKey) {
  ShortcutTable table;
  table.load(2, {kPlan, kSite});
  table.removeRow(1);
  table.clear();
  EXPECT_EQ(table.newKey(), u"000000002");
}

TEST(ShortcutTable, TheCounterStopsAtItsGreatestNumber) {
  constexpr std::int32_t kGreatest = std::numeric_limits<std::int32_t>::max();
  ShortcutTable table;
  table.load(kGreatest, {});
  EXPECT_EQ(table.newKey(), u"147483647");
  EXPECT_EQ(table.freeId(), kGreatest);
}

TEST(ShortcutTable, ARowIsTheFirstThreeTabSeparatedPieces) {
  const struct {
    Text text;
    Shortcut shortcut;
  } rows[] = {
      {u"000000000\tPlan\tC:\\plan.pdf", kPlan},
      {u"000000000\tPlan\tC:\\plan.pdf\trest\tof it", kPlan},
      {u"", {u"", u"", u""}},
      {u"k", {u"k", u"", u""}},
      {u"k\tn", {u"k", u"n", u""}},
      {u"\t\ta", {u"", u"", u"a"}},
  };
  for (const auto& row : rows) {
    ShortcutTable table;
    table.addRow(row.text);
    EXPECT_EQ(table.rows(), Rows{row.shortcut});
  }
}

TEST(ShortcutTable, RowsAreAddedAtTheEndChangedAndRemoved) {
  ShortcutTable table;
  table.load(2, {kPlan});
  table.addRow(u"000000001\tSite\twebhttp://localhost");
  EXPECT_EQ(table.rows(), (Rows{kPlan, kSite}));
  table.setRow(0, {u"a", u"b", u"c"});
  EXPECT_EQ(table.rows(), (Rows{{u"a", u"b", u"c"}, kSite}));
  table.removeRow(0);
  EXPECT_EQ(table.rows(), Rows{kSite});
  table.clear();
  EXPECT_EQ(table.rows(), Rows{});
}

TEST(ShortcutTable, ARowThatIsNotThereIsLeftAlone) {
  ShortcutTable table;
  table.load(2, {kPlan});
  int changes = 0;
  table.subscribe([&changes] { ++changes; });
  table.setRow(1, kSite);
  table.removeRow(1);
  EXPECT_EQ(table.rows(), Rows{kPlan});
  EXPECT_EQ(changes, 0);
}

TEST(ShortcutTable, ObserversSeeTheTableAfterEachChange) {
  ShortcutTable table;
  std::vector<std::size_t> sizes;
  table.subscribe([&] { sizes.push_back(table.rows().size()); });
  table.load(1, {kPlan});
  table.newKey();
  table.addRow(u"k");
  table.setRow(1, kSite);
  table.removeRow(0);
  table.clear();
  EXPECT_EQ(sizes, (std::vector<std::size_t>{1, 1, 2, 2, 1, 0}));
}

TEST(ShortcutTable, AnObserverIsLeftInPeaceAfterItUnsubscribed) {
  ShortcutTable table;
  int first = 0;
  int second = 0;
  const int subscription = table.subscribe([&first] { ++first; });
  table.subscribe([&second] { ++second; });
  table.clear();
  table.unsubscribe(subscription);
  table.clear();
  EXPECT_EQ(first, 1);
  EXPECT_EQ(second, 2);
}

TEST(ShortcutTable, AnObserverMayUnsubscribeWhileItIsCalled) {
  ShortcutTable table;
  int calls = 0;
  int subscription = 0;
  subscription = table.subscribe([&] {
    ++calls;
    table.unsubscribe(subscription);
  });
  table.clear();
  table.clear();
  EXPECT_EQ(calls, 1);
}
