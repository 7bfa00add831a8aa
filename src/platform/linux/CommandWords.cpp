// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/linux/CommandWords.h"

#include <algorithm>

namespace {

constexpr TextView kSeparators = u" \t";
constexpr TextView kGuardedInDoubleQuotes = u"\"\\$`";
constexpr TextView kHarmless = u"-_./,:=+@%^";

// Adds what stands between single quotes from `at` on; the place behind the closing one.
std::size_t takeSingleQuoted(TextView text, std::size_t at, Text& word) {
  const std::size_t end = std::min(text.find(u'\'', at), text.size());
  word.append(text.substr(at, end - at));
  return std::min(end + 1, text.size());
}

std::size_t takeDoubleQuoted(TextView text, std::size_t at, Text& word) {
  for (; at < text.size() && text[at] != u'"'; ++at) {
    const bool guards = text[at] == u'\\' && at + 1 < text.size() &&
                        kGuardedInDoubleQuotes.find(text[at + 1]) != TextView::npos;
    word += text[guards ? ++at : at];
  }
  return std::min(at + 1, text.size());
}

// The word that begins at `at`, which is no separator; the place behind it.
std::size_t takeWord(TextView text, std::size_t at, Text& word) {
  while (at < text.size() && kSeparators.find(text[at]) == TextView::npos) {
    const char16_t unit = text[at++];
    if (unit == u'\'') {
      at = takeSingleQuoted(text, at, word);
    } else if (unit == u'"') {
      at = takeDoubleQuoted(text, at, word);
    } else if (unit == u'\\' && at < text.size()) {
      word += text[at++];
    } else {
      word += unit;
    }
  }
  return at;
}

bool isHarmless(char16_t unit) {
  const bool letterOrDigit = (unit >= u'a' && unit <= u'z') || (unit >= u'A' && unit <= u'Z') ||
                             (unit >= u'0' && unit <= u'9');
  constexpr char16_t kFirstBeyondAscii = 0x80;
  return letterOrDigit || unit >= kFirstBeyondAscii || kHarmless.find(unit) != TextView::npos;
}

}  // namespace

std::vector<Text> splitCommandWords(TextView text) {
  std::vector<Text> words;
  for (std::size_t at = text.find_first_not_of(kSeparators); at != TextView::npos;
       at = text.find_first_not_of(kSeparators, at)) {
    Text word;
    at = takeWord(text, at, word);
    words.push_back(word);
  }
  return words;
}

Text quoteWord(TextView word) {
  if (!word.empty() && std::all_of(word.begin(), word.end(), isHarmless)) return Text(word);
  Text quoted = u"'";
  for (const char16_t unit : word) {
    if (unit == u'\'') {
      quoted += u"'\\''";
    } else {
      quoted += unit;
    }
  }
  return quoted + u"'";
}

Text guardDash(TextView fileName) {
  return (fileName.starts_with(u'-') ? u"./" : u"") + Text(fileName);
}
