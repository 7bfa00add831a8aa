// SPDX-License-Identifier: GPL-3.0-or-later
#include "text/Split.h"

#include <algorithm>

namespace {

template <class Piece, class View>
std::vector<Piece> splitAt(View text, View separator) {
  std::vector<Piece> pieces;
  std::size_t from = 0;
  for (std::size_t at; (at = text.find(separator, from)) != View::npos;
       from = at + separator.size()) {
    pieces.emplace_back(text.substr(from, at - from));
  }
  pieces.emplace_back(text.substr(from));
  return pieces;
}

template <class View>
View trimmed(View text, View unwanted) {
  const std::size_t first = text.find_first_not_of(unwanted);
  if (first == View::npos) return {};
  return text.substr(first, text.find_last_not_of(unwanted) - first + 1);
}

}  // namespace

std::vector<Text> split(TextView text, TextView separator) {
  return splitAt<Text>(text, separator);
}

std::vector<std::string_view> split(std::string_view bytes, std::string_view separator) {
  return splitAt<std::string_view>(bytes, separator);
}

Text replaceAll(Text text, char16_t from, char16_t to) {
  std::replace(text.begin(), text.end(), from, to);
  return text;
}

TextView trim(TextView text) { return trimmed<TextView>(text, u" "); }

TextView trimLine(TextView line) { return trimmed<TextView>(line, u" \t\r"); }

std::string_view trimLine(std::string_view line) {
  return trimmed<std::string_view>(line, " \t\r");
}

std::vector<std::string_view> splitLines(std::string_view bytes) {
  std::vector<std::string_view> lines;
  while (!bytes.empty()) {
    const std::size_t end = bytes.find('\n');
    std::string_view line = bytes.substr(0, end);
    if (line.ends_with('\r')) line.remove_suffix(1);
    lines.push_back(line);
    bytes = end == std::string_view::npos ? std::string_view() : bytes.substr(end + 1);
  }
  return lines;
}

Text withPlainLineBreaks(TextView text) {
  Text plain;
  plain.reserve(text.size());
  for (std::size_t i = 0; i < text.size(); ++i) {
    const bool crLf = text[i] == u'\r' && i + 1 < text.size() && text[i + 1] == u'\n';
    if (crLf) continue;
    plain += text[i] == u'\r' ? u'\n' : text[i];
  }
  return plain;
}
