// SPDX-License-Identifier: GPL-3.0-or-later
#include "text/Wildcard.h"

#include "text/CaseFold.h"

namespace {

bool isHighSurrogate(char16_t unit) { return unit >= 0xD800 && unit <= 0xDBFF; }
bool isLowSurrogate(char16_t unit) { return unit >= 0xDC00 && unit <= 0xDFFF; }

// How many units the character at `at` has.
std::size_t widthAt(TextView text, std::size_t at) {
  const bool pair =
      at + 1 < text.size() && isHighSurrogate(text[at]) && isLowSurrogate(text[at + 1]);
  return pair ? 2 : 1;
}

// Only the last star that was met is ever widened: what an earlier one could take, this one can.
bool matches(TextView name, TextView pattern) {
  std::size_t n = 0;
  std::size_t p = 0;
  std::size_t afterStar = TextView::npos;
  std::size_t starEnd = 0;  // up to where the last star takes the name
  while (n < name.size()) {
    if (p < pattern.size() && pattern[p] == u'*') {
      afterStar = ++p;
      starEnd = n;
    } else if (p < pattern.size() && pattern[p] == u'?') {
      ++p;
      n += widthAt(name, n);
    } else if (p < pattern.size() && pattern[p] == name[n]) {
      ++p;
      ++n;
    } else if (afterStar != TextView::npos) {
      starEnd += widthAt(name, starEnd);
      n = starEnd;
      p = afterStar;
    } else {
      return false;
    }
  }
  return pattern.find_first_not_of(u'*', p) == TextView::npos;
}

}  // namespace

bool matchesPattern(TextView name, TextView pattern) {
  constexpr TextView kAnyEnding = u".*";
  if (pattern.empty()) return true;
  const Text lowerName = toLower(name);
  const Text lowerPattern = toLower(pattern);
  TextView view = lowerPattern;
  if (matches(lowerName, view)) return true;
  if (!view.ends_with(kAnyEnding)) return false;
  view.remove_suffix(kAnyEnding.size());
  return matches(lowerName, view);
}
