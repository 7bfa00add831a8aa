// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include "config/ShortcutFile.h"
#include "text/LocaleData.h"
#include "text/Numbers.h"
#include "unit/tools/RunTavrolloctl.h"

namespace {

Outcome runOn(const std::string& bytes) {
  const Scratch folder;
  writeBytes(folder.text("table.js"), bytes);
  return runTavrolloctl({"shortcuts", argument(folder.text("table.js"))});
}

std::string bytesWith(std::int32_t freeId, std::vector<Shortcut> rows) {
  ShortcutTable table;
  table.load(freeId, std::move(rows));
  return shortcutBytes(table);
}

}  // namespace

TEST(TavrolloctlShortcuts, ShowsFreeIdAndThenEachShortcut) {
  const Outcome run = runOn(bytesWith(
      12, {{u"000000003", u"Été à Łódź", u"C:\\é.pdf"}, {u"000000007", u"", u"loc/home/Łukasz"}}));
  EXPECT_EQ(run.status, 0);
  EXPECT_EQ(run.out, "FreeId\t12\n"
                     "000000003\tÉté à Łódź\tC:\\é.pdf\n"
                     "000000007\t\tloc/home/Łukasz\n");
  EXPECT_EQ(run.err, "");
}

TEST(TavrolloctlShortcuts, AnEmptyTableIsOneLine) {
  const Outcome run = runOn(bytesWith(0, {}));
  EXPECT_EQ(run.status, 0);
  EXPECT_EQ(run.out, "FreeId\t0\n");
}

TEST(TavrolloctlShortcuts, TenThousandAreShownInTheirOrder) {
  std::vector<Shortcut> rows;
  std::string expected = "FreeId\t10000\n";
  for (std::int32_t i = 0; i < 10'000; ++i) {
    rows.push_back({nineDigits(i), u"é", u"a"});
    expected += std::string(9 - std::to_string(i).size(), '0') + std::to_string(i) + "\té\ta\n";
  }
  EXPECT_EQ(runOn(bytesWith(10'000, rows)).out, expected);
}

TEST(TavrolloctlShortcuts, ATableThatDoesNotReadShowsNothingButOneSentence) {
  for (const std::string bytes : {"", "var FreeId=\r\nx\r\n", "var FreeId=2\r\nx\r\n",
                                  "var FreeId=2\r\nx\r\ntabObj[\"000000001\"]=\"a\";\r\n}\r\n"}) {
    const Scratch folder;
    const std::string path = argument(folder.text("table.js"));
    writeBytes(folder.text("table.js"), bytes);
    const Outcome run = runTavrolloctl({"shortcuts", path});
    EXPECT_EQ(run.status, 2);
    EXPECT_EQ(run.out, "");
    EXPECT_EQ(run.err, "Le fichier " + path + " n'est pas une table de raccourcis complète.\n");
  }
}
