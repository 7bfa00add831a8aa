// SPDX-License-Identifier: GPL-3.0-or-later
#include "windows/TestTable.h"

#include <gtest/gtest.h>

namespace {

using Rows = std::vector<Shortcut>;

std::string file(const std::string& freeId, const std::string& entries) {
  return "var FreeId=" + freeId + "\r\nvar tabObj = new Object();\r\n" + entries;
}

const std::string kPlanLine = "tabObj[\"000000003\"]=\"Mon nom_|_C:\\docs\\plan.pdf\";\r\n";
const Shortcut kPlan{u"000000003", u"Mon nom", u"C:\\docs\\plan.pdf"};
constexpr const char* kEnd = "function ShortQrCode(myKey){\r\n";

struct Row {
  const char* name;
  std::string bytes;
  TestTable table;
};

const Row kRows[] = {
    {"an entry", file("1", kPlanLine), {1, {kPlan}, {}}},
    {"the second line is whatever it is", "var FreeId=1\nx\n" + kPlanLine, {1, {kPlan}, {}}},
    {"only FreeId entries are read", file("1", kPlanLine + kPlanLine), {1, {kPlan}, {}}},
    {"another line ends the entries", file("7", kPlanLine + kEnd + kPlanLine), {7, {kPlan}, {}}},
    {"a line that begins almost as an entry ends them too",
     file("7", kPlanLine + "tabl[\"000000004\"]=\"n_|_a\";\r\n"),
     {7, {kPlan}, {}}},
    {"no entry", file("0", ""), {0, {}, {}}},
    {"the file ends too early", file("2", kPlanLine), {2, {kPlan}, failures::pastEndOfFile()}},
    {"an address with a separator is cut at it and loses two more characters",
     file("1", "tabObj[\"000000003\"]=\"n_|_C:\\docs_|_x\";\r\n"),
     {1, {{u"000000003", u"n", u"C:\\do"}}, {}}},
    {"an empty address",
     file("1", "tabObj[\"000000003\"]=\"n_|_\";"),
     {1, {{u"000000003", u"n", u""}}, {}}},
    {"an address without its end",
     file("2", kPlanLine + "tabObj[\"000000004\"]=\"n_|_;"),
     {2, {kPlan}, failures::invalidCall()}},
    {"no address at all",
     file("2", kPlanLine + "tabObj[\"000000004\"]=\"n\";"),
     {2, {kPlan}, failures::noSuchIndex()}},
    {"an entry that is cut off", file("1", "tabO"), {1, {}, failures::noSuchIndex()}},
    {"texts stay byte text",
     file("1", "tabObj[\"000000003\"]=\"Caf\xC3\xA9_|_\xE9\";"),
     {1, {{u"000000003", u"CafÃ©", u"é"}}, {}}},
    {"no number", file("x", kPlanLine), {std::nullopt, {}, failures::typeMismatch()}},
    {"a short first line", "var\r\nx\r\n", {std::nullopt, {}, failures::typeMismatch()}},
    {"one line alone", "var FreeId=3", {3, {}, failures::pastEndOfFile()}},
    {"an empty file", "", {std::nullopt, {}, failures::pastEndOfFile()}},
    {"a number that is too great",
     file("2147483648", ""),
     {std::nullopt, {}, failures::typeMismatch()}},
};

}  // namespace

TEST(TestTable, IsReadLineByLine) {
  for (const Row& row : kRows) {
    const TestTable table = readTestTable(row.bytes, frenchLocale());
    EXPECT_EQ(table.freeId, row.table.freeId) << row.name;
    EXPECT_EQ(table.rows, row.table.rows) << row.name;
    EXPECT_EQ(table.failure, row.table.failure) << row.name;
  }
}
