// SPDX-License-Identifier: GPL-3.0-or-later
#include "config/ShortcutFile.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "config/StoredField.h"
#include "text/AnsiCodePage.h"
#include "text/EncodeDecodeUtf8.h"
#include "text/Numbers.h"
#include "text/Split.h"
#include "text/StoredText.h"

namespace {

constexpr std::string_view kSeparator = "_|_";
constexpr std::string_view kEntryBegin = "tabO";
constexpr std::size_t kKeyAt = 8;
constexpr std::size_t kKeyLength = 9;
constexpr std::size_t kValueAt = 21;
constexpr std::size_t kEntryEndLength = 2;  // the closing quote and the semicolon

constexpr std::string_view kFunctions = "function ShortQrCode(myKey){\r\n"
                                        "var t = tabObj[myKey].split(\"_|_\");\r\n"
                                        "return t[1];\r\n"
                                        "}\r\n"
                                        "function NameQrCode(myKey){\r\n"
                                        "var t = tabObj[myKey].split(\"_|_\");\r\n"
                                        "return t[0];\r\n"
                                        "}\r\n";

// From `at` on, and nothing where the bytes are shorter.
std::string_view from(std::string_view bytes, std::size_t at) {
  return bytes.substr(std::min(at, bytes.size()));
}

std::string entryLine(const Shortcut& shortcut) {
  std::string line = "tabObj[\"";
  line += onOneLine(toAnsi(shortcut.key));
  line += "\"]=\"";
  line += onOneLine(toAnsi(EncodeDecodeUtf8::encode(shortcut.name)));
  line += kSeparator;
  line += storedField(shortcut.address);
  line += "\";\r\n";
  return line;
}

// The number behind the first "=", with or without a semicolon behind it.
std::optional<std::int32_t> freeIdIn(std::string_view line, const LocaleData& locale) {
  const std::size_t equals = line.find('=');
  if (equals == std::string_view::npos) return std::nullopt;
  const Text behind = fromAnsi(line.substr(equals + 1));
  TextView number = trim(behind);
  if (number.ends_with(u';')) number.remove_suffix(1);
  return toInt32(number, locale);
}

std::optional<Shortcut> entryIn(std::string_view line) {
  const auto pieces = split(from(line, kValueAt), kSeparator);
  if (pieces.size() < 2) return std::nullopt;
  const std::string_view address =
      pieces[1].substr(0, pieces[1].size() - std::min(pieces[1].size(), kEntryEndLength));

  Text row = fromAnsi(from(line, kKeyAt).substr(0, kKeyLength));
  row.append(u"\t").append(EncodeDecodeUtf8::decode(fromAnsi(pieces[0])));
  row.append(u"\t").append(fromStoredText(address));
  return shortcutFromTabs(row);
}

}  // namespace

std::string shortcutBytes(const ShortcutTable& table) {
  std::string bytes = "var FreeId=";
  bytes += toAnsi(numberText(static_cast<std::int64_t>(table.freeId()))) + "\r\n";
  bytes += "var tabObj = new Object();\r\n";
  for (const Shortcut& shortcut : table.rows()) bytes += entryLine(shortcut);
  bytes += kFunctions;
  return bytes;
}

bool parseShortcuts(std::string_view bytes, ShortcutTable& table, const LocaleData& locale) {
  const std::vector<std::string_view> lines = splitLines(bytes);
  if (lines.size() < 2) return false;
  const std::optional<std::int32_t> freeId = freeIdIn(lines[0], locale);
  if (!freeId) return false;

  std::vector<Shortcut> rows;
  for (std::int64_t i = 0; i < *freeId; ++i) {
    const auto at = static_cast<std::size_t>(i) + 2;
    if (at >= lines.size()) return false;
    if (!lines[at].starts_with(kEntryBegin)) break;
    std::optional<Shortcut> entry = entryIn(lines[at]);
    if (!entry) return false;
    rows.push_back(std::move(*entry));
  }
  table.load(*freeId, std::move(rows));
  return true;
}
