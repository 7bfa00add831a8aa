// SPDX-License-Identifier: GPL-3.0-or-later
#include "config/ItemReader.h"

#include <algorithm>

std::optional<std::string_view> ItemReader::next() {
  skipBlanks();
  if (rest_.empty()) return std::nullopt;
  return rest_.front() == '"' ? nextQuoted() : nextPlain();
}

std::optional<std::string_view> ItemReader::nextQuoted() {
  rest_.remove_prefix(1);
  const std::size_t quote = rest_.find('"');
  if (quote == std::string_view::npos) {
    rest_ = {};
    return std::nullopt;
  }
  const std::string_view item = rest_.substr(0, quote);
  rest_.remove_prefix(quote + 1);
  skipBlanks();
  skipSeparator();
  return item;
}

std::string_view ItemReader::nextPlain() {
  const std::size_t end = std::min(rest_.find_first_of(",\n"), rest_.size());
  std::string_view item = rest_.substr(0, end);
  rest_.remove_prefix(end);
  const bool atLineEnd = rest_.empty() || rest_.front() == '\n';
  if (atLineEnd && item.ends_with('\r')) item.remove_suffix(1);
  skipSeparator();
  return item;
}

void ItemReader::skipBlanks() {
  rest_.remove_prefix(std::min(rest_.find_first_not_of(' '), rest_.size()));
}

void ItemReader::skipSeparator() {
  if (rest_.starts_with("\r\n")) {
    rest_.remove_prefix(2);
  } else if (rest_.starts_with('\n') || rest_.starts_with(',')) {
    rest_.remove_prefix(1);
  }
}
