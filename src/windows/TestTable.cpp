// SPDX-License-Identifier: GPL-3.0-or-later
#include "windows/TestTable.h"

#include <algorithm>

#include "text/AnsiCodePage.h"
#include "text/Numbers.h"
#include "text/Split.h"

namespace {

constexpr std::size_t kFreeIdAt = 11;  // behind "var FreeId="
constexpr TextView kEntryBegin = u"tabO";
constexpr std::size_t kKeyAt = 8;
constexpr std::size_t kKeyLength = 9;
constexpr std::size_t kValueAt = 21;        // behind the value's opening quote
constexpr std::size_t kEntryEndLength = 2;  // the closing quote and the semicolon
constexpr std::size_t kFirstEntryLine = 2;

// From `at` on, and nothing where the line is shorter.
TextView from(TextView line, std::size_t at) { return line.substr(std::min(at, line.size())); }

Failure readRow(TextView line, Shortcut& row) {
  const std::vector<Text> pieces = split(from(line, kValueAt), kFieldSeparator);
  if (pieces.size() < 2) return failures::noSuchIndex();
  const Text& address = pieces[1];
  if (address.size() < kEntryEndLength) return failures::invalidCall();
  Text cells(from(line, kKeyAt).substr(0, kKeyLength));
  cells.append(u"\t").append(pieces[0]).append(u"\t");
  row = shortcutFromTabs(cells.append(address.substr(0, address.size() - kEntryEndLength)));
  return {};
}

Failure readRows(const std::vector<std::string_view>& lines, std::int32_t freeId,
                 std::vector<Shortcut>& rows) {
  for (std::int64_t i = 0; i < freeId; ++i) {
    const std::size_t at = kFirstEntryLine + static_cast<std::size_t>(i);
    if (at >= lines.size()) return failures::pastEndOfFile();
    const Text line = fromAnsi(lines[at]);
    if (!line.starts_with(kEntryBegin)) return {};
    Shortcut row;
    if (Failure failure = readRow(line, row)) return failure;
    rows.push_back(row);
  }
  return {};
}

}  // namespace

TestTable readTestTable(std::string_view bytes, const LocaleData& locale) {
  TestTable table;
  const std::vector<std::string_view> lines = splitLines(bytes);
  if (lines.empty()) {
    table.failure = failures::pastEndOfFile();
    return table;
  }
  table.freeId = toInt32(from(fromAnsi(lines[0]), kFreeIdAt), locale);
  if (!table.freeId) {
    table.failure = failures::typeMismatch();
  } else if (lines.size() < kFirstEntryLine) {
    table.failure = failures::pastEndOfFile();
  } else {
    table.failure = readRows(lines, *table.freeId, table.rows);
  }
  return table;
}
