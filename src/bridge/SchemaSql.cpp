// SPDX-License-Identifier: GPL-3.0-or-later
#include "bridge/SchemaSql.h"

#include <algorithm>
#include <array>

#include "text/CaseFold.h"

namespace {

bool isBlank(char c) { return c == ' ' || c == '\t' || c == '\n' || c == '\r' || c == '\f'; }

char closingQuote(char opening) {
  switch (opening) {
    case '"':
    case '\'':
    case '`': return opening;
    case '[': return ']';
    default: return '\0';
  }
}

// Where the quoted text that begins at `at` ends: the place behind its closing quote.
std::size_t behindQuoted(std::string_view sql, std::size_t at) {
  const std::size_t end = sql.find(closingQuote(sql[at]), at + 1);
  return end == std::string_view::npos ? sql.size() : end + 1;
}

// The declarations between the outermost parentheses, split at the commas of that level.
std::vector<std::string_view> declarations(std::string_view sql) {
  std::vector<std::string_view> parts;
  std::size_t depth = 0;
  std::size_t from = 0;
  for (std::size_t at = 0; at < sql.size();) {
    const char c = sql[at];
    if (closingQuote(c) != '\0') {
      at = behindQuoted(sql, at);
      continue;
    }
    if (c == '(' && ++depth == 1) from = at + 1;
    const bool lastEnds = c == ')' && depth == 1;
    if (lastEnds || (c == ',' && depth == 1)) {
      parts.push_back(sql.substr(from, at - from));
      from = at + 1;
    }
    if (lastEnds) return parts;
    if (c == ')' && depth > 0) --depth;
    ++at;
  }
  return {};
}

// The first word of a declaration, without its quotes.
std::string firstWord(std::string_view declaration) {
  while (!declaration.empty() && isBlank(declaration.front())) declaration.remove_prefix(1);
  if (declaration.empty()) return {};
  std::string word;
  if (closingQuote(declaration.front()) != '\0') {
    const std::size_t end = declaration.find(closingQuote(declaration.front()), 1);
    word = declaration.substr(1, end == std::string_view::npos ? end : end - 1);
  } else {
    const auto end = std::find_if(declaration.begin(), declaration.end(),
                                  [](char c) { return isBlank(c) || c == '('; });
    word.assign(declaration.begin(), end);
  }
  return toLowerAscii(word);
}

bool isTableConstraint(const std::string& word) {
  constexpr std::array<std::string_view, 5> kWords = {"constraint", "primary", "unique", "check",
                                                      "foreign"};
  return std::find(kWords.begin(), kWords.end(), word) != kWords.end();
}

}  // namespace

std::vector<std::string> columnNames(std::string_view createTable) {
  std::vector<std::string> names;
  for (const std::string_view declaration : declarations(createTable)) {
    std::string word = firstWord(declaration);
    if (isTableConstraint(word)) break;  // constraints stand behind the last column
    names.push_back(std::move(word));
  }
  return names;
}
