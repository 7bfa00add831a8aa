// SPDX-License-Identifier: GPL-3.0-or-later
#include "config/ShortcutFile.h"

#include <gtest/gtest.h>

#include <random>

#include "text/Numbers.h"
#include "text/Split.h"

namespace {

using Rows = std::vector<Shortcut>;

const LocaleData kFrench = frenchLocale();

const std::string kFunctions = "function ShortQrCode(myKey){\r\n"
                               "var t = tabObj[myKey].split(\"_|_\");\r\n"
                               "return t[1];\r\n"
                               "}\r\n"
                               "function NameQrCode(myKey){\r\n"
                               "var t = tabObj[myKey].split(\"_|_\");\r\n"
                               "return t[0];\r\n"
                               "}\r\n";

std::string file(const std::string& freeId, const std::string& entries) {
  return "var FreeId=" + freeId + "\r\nvar tabObj = new Object();\r\n" + entries + kFunctions;
}

ShortcutTable tableOf(std::int32_t freeId, Rows rows) {
  ShortcutTable table;
  table.load(freeId, std::move(rows));
  return table;
}

// What `bytes` load; nothing when they do not.
std::optional<Rows> rowsIn(const std::string& bytes) {
  ShortcutTable table;
  if (!parseShortcuts(bytes, table, kFrench)) return std::nullopt;
  return table.rows();
}

}  // namespace

TEST(ShortcutFile, IsWrittenToTheByte) {
  const ShortcutTable table = tableOf(12, {{u"000000003", u"Mon nom", u"C:\\docs\\plan.pdf"},
                                           {u"000000007", u"Été", u"loc/home/é"}});
  EXPECT_EQ(shortcutBytes(table),
            file("12", "tabObj[\"000000003\"]=\"Mon nom_|_C:\\docs\\plan.pdf\";\r\n"
                       "tabObj[\"000000007\"]=\"\xC3\x89t\xC3\xA9_|_loc/home/\xE9\";\r\n"));
  EXPECT_EQ(shortcutBytes(tableOf(0, {})), file("0", ""));
}

TEST(ShortcutFile, WhatWasWrittenReadsBack) {
  const Rows rows = {
      {u"000000000", u"", u""},
      {u"000000001", u"Été à Łódź \U0001F600", u"C:\\docs\\plan.pdf"},
      {u"000000002", u"c", u"loc/home/Łukasz/é"},
      {u"000000003", u"a | _ b", u"webhttp://localhost/?a=1,2;3"},
      {u"000000004", u"Ã©", u"Ã©"},
  };
  EXPECT_EQ(rowsIn(shortcutBytes(tableOf(9, rows))), rows);
}

TEST(ShortcutFile, TenThousandShortcutsSurviveTheRoundTrip) {
  Rows rows;
  for (std::int32_t i = 0; i < 10'000; ++i) {
    const Text number = numberText(std::int64_t{i});
    rows.push_back({nineDigits(i), u"Né " + number, u"locfile:///C:/é/" + number});
  }
  const std::string bytes = shortcutBytes(tableOf(10'000, rows));
  ShortcutTable table;
  int changes = 0;
  table.subscribe([&changes] { ++changes; });
  ASSERT_TRUE(parseShortcuts(bytes, table, kFrench));
  EXPECT_EQ(table.rows(), rows);
  EXPECT_EQ(table.freeId(), 10'000);
  EXPECT_EQ(changes, 1);
  EXPECT_EQ(shortcutBytes(table), bytes);
}

TEST(ShortcutFile, ALineBreakInAFieldBecomesABlank) {
  const ShortcutTable table = tableOf(1, {{u"00000\n000", u"a\r\nb", u"c\nd\re"}});
  EXPECT_EQ(shortcutBytes(table), file("1", "tabObj[\"00000 000\"]=\"a  b_|_c d e\";\r\n"));
}

TEST(ShortcutFile, LinesMayEndInLfAlone) {
  std::string bytes = file("2", "tabObj[\"000000001\"]=\"a_|_b\";\r\n");
  std::erase(bytes, '\r');
  EXPECT_EQ(rowsIn(bytes), (Rows{{u"000000001", u"a", u"b"}}));
}

TEST(ShortcutFile, AfterDeletionsTheListEndsAtTheFirstFunction) {
  const std::string entries = "tabObj[\"000000003\"]=\"a_|_b\";\r\n"
                              "tabObj[\"000000900\"]=\"c_|_d\";\r\n";
  EXPECT_EQ(rowsIn(file("1000", entries)),
            (Rows{{u"000000003", u"a", u"b"}, {u"000000900", u"c", u"d"}}));
  EXPECT_EQ(rowsIn(file("5", "")), Rows{});
}

TEST(ShortcutFile, NoMoreLinesThanFreeIdAreRead) {
  const std::string entries = "tabObj[\"000000000\"]=\"a_|_b\";\r\n"
                              "tabObj[\"000000001\"]=\"c_|_d\";\r\n";
  EXPECT_EQ(rowsIn(file("1", entries)), (Rows{{u"000000000", u"a", u"b"}}));
  EXPECT_EQ(rowsIn(file("0", entries)), Rows{});
  EXPECT_EQ(rowsIn(file("-3", entries)), Rows{});
}

TEST(ShortcutFile, OnlyTheFirstFourCharactersTellAnEntry) {
  EXPECT_EQ(rowsIn(file("3", "tabOxxxx000000001xxxxa_|_b\";\r\n")),
            (Rows{{u"000000001", u"a", u"b"}}));
  EXPECT_EQ(rowsIn(file("3", "TabObj[\"000000001\"]=\"a_|_b\";\r\n")), Rows{});
  EXPECT_EQ(rowsIn(file("3", " tabObj[\"00000001\"]=\"a_|_b\";\r\n")), Rows{});
}

TEST(ShortcutFile, TheSecondLineIsSkippedWhateverItHolds) {
  EXPECT_EQ(rowsIn("var FreeId=1\r\ntabObj[\"000000009\"]=\"x_|_y\";\r\n"
                   "tabObj[\"000000001\"]=\"a_|_b\";\r\n"),
            (Rows{{u"000000001", u"a", u"b"}}));
}

TEST(ShortcutFile, TheNumberStandsBehindTheFirstEqualsSign) {
  const struct {
    std::string line;
    std::optional<std::int32_t> freeId;
  } rows[] = {
      {"var FreeId=12", 12},
      {"var FreeId= 12 ", 12},
      {"FreeId = 12", 12},
      {"var FreeId=12;", 12},
      {"=7", 7},
      {"var FreeId=", std::nullopt},
      {"var FreeId=;", std::nullopt},
      {"var FreeId", std::nullopt},
      {"", std::nullopt},
      {"var FreeId=abc", std::nullopt},
      {"a=b=3", std::nullopt},
      {"var FreeId=2147483648", std::nullopt},
  };
  for (const auto& row : rows) {
    ShortcutTable table;
    const bool loaded = parseShortcuts(row.line + "\r\nx\r\nfunction\r\n", table, kFrench);
    EXPECT_EQ(loaded, row.freeId.has_value()) << row.line;
    EXPECT_EQ(table.freeId(), row.freeId.value_or(0)) << row.line;
  }
}

TEST(ShortcutFile, AFileThatEndsBeforeTheListDoesIsAFailure) {
  EXPECT_EQ(rowsIn(""), std::nullopt);
  EXPECT_EQ(rowsIn("var FreeId=0\r\n"), std::nullopt);
  EXPECT_EQ(rowsIn("var FreeId=1\r\nvar tabObj = new Object();\r\n"), std::nullopt);
  EXPECT_EQ(rowsIn("var FreeId=2\r\nx\r\ntabObj[\"000000001\"]=\"a_|_b\";\r\n"), std::nullopt);
  EXPECT_EQ(rowsIn("var FreeId=0\r\nvar tabObj = new Object();\r\n"), Rows{});
  EXPECT_EQ(rowsIn("var FreeId=1\r\nx\r\ntabObj[\"000000001\"]=\"a_|_b\";"),
            (Rows{{u"000000001", u"a", u"b"}}));
}

TEST(ShortcutFile, AnEntryWithoutTheSeparatorIsAFailure) {
  EXPECT_EQ(rowsIn(file("3", "tabObj[\"000000001\"]=\"ab\";\r\n")), std::nullopt);
  EXPECT_EQ(rowsIn(file("3", "tabO\r\n")), std::nullopt);
  // In front of the value it does not count.
  EXPECT_EQ(rowsIn(file("3", "tabObj[\"_|_000001\"]=\"ab\";\r\n")), std::nullopt);
}

TEST(ShortcutFile, AFailureLeavesTheTableAsItWas) {
  ShortcutTable table = tableOf(4, {{u"k", u"n", u"a"}});
  int changes = 0;
  table.subscribe([&changes] { ++changes; });
  EXPECT_FALSE(
      parseShortcuts(file("9", "tabObj[\"000000001\"]=\"a_|_b\";\r\ntabObj\r\n"), table, kFrench));
  EXPECT_EQ(table.freeId(), 4);
  EXPECT_EQ(table.rows(), (Rows{{u"k", u"n", u"a"}}));
  EXPECT_EQ(changes, 0);

  ShortcutTable never;
  EXPECT_FALSE(parseShortcuts("", never, kFrench));
  EXPECT_FALSE(never.wasLoaded());
}

TEST(ShortcutFile, AKeyOfAnotherLengthShiftsTheColumns) {
  EXPECT_EQ(rowsIn(file("2", "tabObj[\"00000001\"]=\"nom_|_adresse\";\r\n")),
            (Rows{{u"00000001\"", u"om", u"adresse"}}));
  EXPECT_EQ(rowsIn(file("2", "tabObj[\"0000000012\"]=\"nom_|_adresse\";\r\n")),
            (Rows{{u"000000001", u"\"nom", u"adresse"}}));
  EXPECT_EQ(rowsIn(file("2", "tabObj[\"0001\"]=\"nom_|_adresse\";\r\n")), std::nullopt);
}

TEST(ShortcutFile, ANameWithTheSeparatorIsSplitByTheReader) {
  EXPECT_EQ(rowsIn(shortcutBytes(tableOf(1, {{u"000000000", u"a_|_bcd", u"adresse"}}))),
            (Rows{{u"000000000", u"a", u"b"}}));
  EXPECT_EQ(rowsIn(shortcutBytes(tableOf(1, {{u"000000000", u"a_|_b", u"adresse"}}))),
            (Rows{{u"000000000", u"a", u""}}));
}

TEST(ShortcutFile, NamesAreUtf8AndAddressesAreStoredTexts) {
  EXPECT_EQ(rowsIn(file("2", "tabObj[\"000000001\"]=\"\xC3\xA9_|_\xE9\";\r\n")),
            (Rows{{u"000000001", u"é", u"é"}}));
  EXPECT_EQ(rowsIn(file("2", "tabObj[\"000000001\"]=\"\xE9_|_\xC3\xA9\";\r\n")),
            (Rows{{u"000000001", u"\uFFFD", u"é"}}));
}

TEST(ShortcutFile, ATabInAFieldEndsTheColumn) {
  EXPECT_EQ(rowsIn(file("2", "tabObj[\"000000001\"]=\"a_|_b\tc\";\r\n")),
            (Rows{{u"000000001", u"a", u"b"}}));
}

TEST(ShortcutFile, NoiseNeverDoesHarm) {
  const std::string whole = file("3", "tabObj[\"000000001\"]=\"a_|_b\";\r\n"
                                      "tabObj[\"000000002\"]=\"\xC3\xA9_|_\xE9\";\r\n");
  const std::string likely = "=_|\"\r\n0123;tabO\t\xC3";
  for (unsigned seed = 0; seed < 10'000; ++seed) {
    std::mt19937 random(seed);
    std::string bytes = whole.substr(0, random() % 2 == 0 ? whole.size() : random() % whole.size());
    for (std::size_t changes = random() % 8; changes > 0 && !bytes.empty(); --changes) {
      bytes[random() % bytes.size()] =
          random() % 3 == 0 ? static_cast<char>(random()) : likely[random() % likely.size()];
    }
    ShortcutTable table;
    const bool loaded = parseShortcuts(bytes, table, kFrench);
    ASSERT_EQ(loaded, table.wasLoaded()) << "seed " << seed;
    ASSERT_LE(table.rows().size(), splitLines(bytes).size()) << "seed " << seed;
    // One row stays one line.
    ASSERT_EQ(splitLines(shortcutBytes(table)).size(), table.rows().size() + 10) << "seed " << seed;
  }
}
