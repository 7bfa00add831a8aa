// SPDX-License-Identifier: GPL-3.0-or-later
#include "bridge/CookieTable.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "unit/bridge/BrowserStore.h"

namespace {

constexpr std::string_view kName = "Tavr1CodeToExe";

std::string bytesOf(const StoreImage& image) {
  std::string bytes(static_cast<std::size_t>(image.size()), '\0');
  EXPECT_FALSE(image.read(0, {bytes.data(), bytes.size()}));
  return bytes;
}

// Every row that the table owns up to, and how often the name's bytes stand in the image at all.
struct Answers {
  std::vector<std::string> rows;  // host | value
  std::size_t occurrences = 0;
};

Answers answersFor(const Text& path, std::uint64_t valueNeeded = 262) {
  StoreImage image;
  EXPECT_FALSE(image.open(path));
  CookieTable table(image);
  const std::string bytes = bytesOf(image);
  Answers answers;
  for (std::size_t at = 0; (at = bytes.find(kName, at)) != std::string::npos; ++at) {
    ++answers.occurrences;
    const std::optional<CookieRow> row = table.rowNamedAt(at, kName, valueNeeded);
    if (!row) continue;
    answers.rows.push_back(row->host + "|" +
                           bytes.substr(static_cast<std::size_t>(row->valueOffset),
                                        static_cast<std::size_t>(row->valueLength)));
  }
  std::sort(answers.rows.begin(), answers.rows.end());
  return answers;
}

class CookieTableTest : public testing::Test {
 protected:
  Text path() const { return folder_ / u"cookies.sqlite"; }

  StoreFolder folder_;
};

using Rows = std::vector<std::string>;

}  // namespace

TEST_F(CookieTableTest, FindsTheRowAmongThreeThousandOthersAndNotTheIndexEntry) {
  FirefoxStore store(path());
  store.setOthers(3000);
  store.setCommand("runapp_|_x_|_");
  const Answers answers = answersFor(path());
  EXPECT_EQ(answers.rows, Rows{"|runapp_|_x_|__e-o-v_"});
  EXPECT_EQ(answers.occurrences, 2u);  // the row and its index entry
}

TEST_F(CookieTableTest, FindsEveryLiveRowOfThatName) {
  FirefoxStore store(path(), 1024);
  store.setOthers(100);
  store.setCommand("a");
  store.setCommand("b", "localhost");
  store.setCommand("c", "www.example.org");
  EXPECT_EQ(answersFor(path()).rows,
            (Rows{"localhost|b_e-o-v_", "www.example.org|c_e-o-v_", "|a_e-o-v_"}));
}

TEST_F(CookieTableTest, FindsTheRowOfAChromium) {
  ChromiumStore store(path());
  store.set("other", "x", "00", ".example.org");
  store.set("Tavr1CodeToExe", "", "763130aabb", "127.0.0.1");
  EXPECT_EQ(answersFor(path()).rows, Rows{"127.0.0.1|"});
  store.set("Tavr1CodeToExe", "ini_|_k_e-o-v_", "", "127.0.0.1");
  EXPECT_EQ(answersFor(path()).rows, Rows{"127.0.0.1|ini_|_k_e-o-v_"});
}

TEST_F(CookieTableTest, TheNameInAnyOtherPlaceIsNoRow) {
  FirefoxStore store(path(), 1024);
  const std::string name(kName);
  store.set("other", name + "ini_|_x_|__e-o-v_", "evil.example");
  store.set("other2", "x", name + ".evil.example");
  store.set("other3", "x", "evil.example", "/" + name);
  store.set(name + "2", "x_e-o-v_", "");
  store.set("x" + name, "x_e-o-v_", "");
  store.database().run(
      "CREATE TABLE notes (id INTEGER PRIMARY KEY, a TEXT, name TEXT, value TEXT, host TEXT);"
      "INSERT INTO notes VALUES (1, '', 'Tavr1CodeToExe', 'ini_|_x_|__e-o-v_', '');"
      "CREATE TABLE named (name TEXT PRIMARY KEY, value TEXT, host TEXT) WITHOUT ROWID;"
      "INSERT INTO named VALUES ('Tavr1CodeToExe', 'ini_|_x_|__e-o-v_', '');"
      "CREATE TABLE Tavr1CodeToExe (x TEXT DEFAULT 'Tavr1CodeToExe_e-o-v_')");
  const Answers answers = answersFor(path());
  EXPECT_EQ(answers.rows, Rows{});
  EXPECT_GE(answers.occurrences, 10u);
}

TEST_F(CookieTableTest, RowsThatWereDroppedAreNoRows) {
  FirefoxStore store(path(), 1024);
  store.database().run("PRAGMA secure_delete=OFF");
  store.setOthers(50);
  store.setCommand("old");
  store.database().run("DELETE FROM moz_cookies WHERE name = 'Tavr1CodeToExe'");
  Answers answers = answersFor(path());
  EXPECT_EQ(answers.rows, Rows{});
  EXPECT_GE(answers.occurrences, 1u);

  // Whole pages that became free keep their cells.
  store.setCommand("old");
  store.setOthers(200);
  store.database().run("DELETE FROM moz_cookies");
  answers = answersFor(path());
  EXPECT_EQ(answers.rows, Rows{});
  EXPECT_GE(answers.occurrences, 1u);

  store.setCommand("new");
  EXPECT_EQ(answersFor(path()).rows, Rows{"|new_e-o-v_"});
}

TEST_F(CookieTableTest, ATableThatWasDroppedHasNoRows) {
  FirefoxStore store(path(), 1024);
  store.setOthers(50);
  store.setCommand("old");
  store.database().run("PRAGMA secure_delete=OFF; DROP TABLE moz_cookies");
  const Answers answers = answersFor(path());
  EXPECT_EQ(answers.rows, Rows{});
  EXPECT_GE(answers.occurrences, 1u);
}

TEST_F(CookieTableTest, ColumnsAreFoundByTheirNames) {
  Database database(path());
  database.run(
      "CREATE TABLE moz_cookies (\"value\" TEXT, x INT, [Host] TEXT, y BLOB, name TEXT);"
      "INSERT INTO moz_cookies VALUES ('v_e-o-v_', 5, 'localhost', x'00ff', 'Tavr1CodeToExe')");
  EXPECT_EQ(answersFor(path()).rows, Rows{"localhost|v_e-o-v_"});
}

TEST_F(CookieTableTest, ATableWithoutTheColumnsHasNoRows) {
  for (const std::string table :
       {"moz_cookies (name TEXT, value TEXT)", "moz_cookies (name TEXT, host TEXT)",
        "moz_cookies (value TEXT, host TEXT, nom TEXT)",
        "cookies (name TEXT, value TEXT, host TEXT)",
        "moz_cookies (name TEXT, value TEXT, host_key TEXT)",
        "Moz_cookies_old (name TEXT, value TEXT, host TEXT)"}) {
    const Text file = folder_ / fromUtf8(std::to_string(std::hash<std::string>()(table)));
    Database database(file);
    database.run("CREATE TABLE " + table);
    const std::string name = table.substr(0, table.find(' '));
    const std::string columns = table.substr(table.find('('));
    const bool two = std::count(columns.begin(), columns.end(), ',') == 1;
    database.run("INSERT INTO " + name + " VALUES ('Tavr1CodeToExe', 'v_e-o-v_'" +
                 (two ? ")" : ", 'Tavr1CodeToExe')"));
    EXPECT_EQ(answersFor(file).rows, Rows{}) << table;
  }
}

TEST_F(CookieTableTest, ADatabaseWithoutTheTableHasNoRows) {
  Database database(path());
  database.run("CREATE TABLE t (name TEXT); INSERT INTO t VALUES ('Tavr1CodeToExe')");
  EXPECT_EQ(answersFor(path()).rows, Rows{});
}

TEST_F(CookieTableTest, ADatabaseInUtf16HasNoSuchRow) {
  Database database(path());
  database.run("PRAGMA encoding='UTF-16le';"
               "CREATE TABLE moz_cookies (name TEXT, value TEXT, host TEXT);"
               "INSERT INTO moz_cookies VALUES ('Tavr1CodeToExe', 'v_e-o-v_', '')");
  const Answers answers = answersFor(path());
  EXPECT_EQ(answers.rows, Rows{});
  database.run("INSERT INTO moz_cookies VALUES (x'546176723143"
               "6F6465546F457865', x'61', '')");
  EXPECT_EQ(answersFor(path()).occurrences, 1u);
  EXPECT_EQ(answersFor(path()).rows, Rows{});
}

TEST_F(CookieTableTest, AHostThatIsNoTextIsNoRow) {
  Database database(path());
  database.run("CREATE TABLE moz_cookies (name, value, host);"
               "INSERT INTO moz_cookies VALUES ('Tavr1CodeToExe', 'a_e-o-v_', NULL);"
               "INSERT INTO moz_cookies VALUES ('Tavr1CodeToExe', 'b_e-o-v_', 0);"
               "INSERT INTO moz_cookies VALUES ('Tavr1CodeToExe', 'c_e-o-v_', x'');"
               "INSERT INTO moz_cookies VALUES (x'546176723143"
               "6F6465546F457865', 'd_e-o-v_', '')");
  const Answers answers = answersFor(path());
  EXPECT_EQ(answers.rows, Rows{});
  EXPECT_EQ(answers.occurrences, 4u);
}

TEST_F(CookieTableTest, TheValueMustStandInOnePieceAsFarAsItIsNeeded) {
  Database database(path());
  database.run(
      "PRAGMA page_size=1024; CREATE TABLE moz_cookies (name TEXT, value TEXT, host TEXT)");
  database.run("INSERT INTO moz_cookies VALUES ('Tavr1CodeToExe', '" + std::string(3000, 'v') +
               "', 'localhost')");
  // 103 to 989 bytes of it stay in the page; the host comes from an overflow page all the same.
  EXPECT_EQ(answersFor(path(), 50).rows.size(), 1u);
  EXPECT_TRUE(answersFor(path(), 50).rows.front().starts_with("localhost|vvv"));
  EXPECT_EQ(answersFor(path(), 2900).rows.size(), 0u);
}

TEST_F(CookieTableTest, ARowWhosePayloadOverflowsBeforeItsNameIsPassedOver) {
  Database database(path());
  database.run(
      "PRAGMA page_size=1024; CREATE TABLE moz_cookies (x TEXT, name TEXT, value TEXT, host TEXT)");
  database.run("INSERT INTO moz_cookies VALUES ('" + std::string(3000, 'v') +
               "', 'Tavr1CodeToExe', 'a_e-o-v_', '')");
  EXPECT_EQ(answersFor(path()).rows, Rows{});
}

TEST_F(CookieTableTest, ASchemaOfManyPagesIsRead) {
  FirefoxStore store(path(), 512);
  for (int i = 0; i < 60; ++i) {
    store.database().run("CREATE TABLE t" + std::to_string(i) + " (a TEXT, b TEXT)");
  }
  store.database().run(
      "ALTER TABLE moz_cookies RENAME TO old; CREATE TABLE moz_cookies AS SELECT * FROM old");
  store.database().run("DROP TABLE old");
  store.setCommand("a");
  EXPECT_EQ(answersFor(path()).rows, Rows{"|a_e-o-v_"});
}

TEST_F(CookieTableTest, PlacesOutsideEveryCellAreNoRows) {
  FirefoxStore store(path(), 1024);
  store.setCommand("a");
  StoreImage image;
  ASSERT_FALSE(image.open(path()));
  CookieTable table(image);
  int rows = 0;
  for (std::uint64_t at = 0; at < image.size() + 2000; ++at) {
    if (table.rowNamedAt(at, kName, 262)) ++rows;
  }
  EXPECT_EQ(rows, 1);
  EXPECT_FALSE(table.rowNamedAt(UINT64_MAX, kName, 262));
}
