// SPDX-License-Identifier: GPL-3.0-or-later
#include "text/CaseFold.h"

#include <algorithm>
#include <iterator>

namespace {

struct Run {
  char16_t first;
  char16_t last;
  int step;
  int distance;
};

constexpr Run kRuns[] = {
#include "text/LowerCaseTable.inc"
};

char16_t toLower(char16_t unit) {
  if (unit < 0x80) return unit >= u'A' && unit <= u'Z' ? static_cast<char16_t>(unit + 0x20) : unit;
  const Run* run = std::lower_bound(std::begin(kRuns), std::end(kRuns), unit,
                                    [](const Run& r, char16_t u) { return r.last < u; });
  if (run == std::end(kRuns) || unit < run->first) return unit;
  if ((unit - run->first) % run->step != 0) return unit;
  return static_cast<char16_t>(unit + run->distance);
}

}  // namespace

Text toLower(TextView text) {
  Text lower(text);
  for (char16_t& unit : lower) unit = toLower(unit);
  return lower;
}

std::string toLowerAscii(std::string_view bytes) {
  std::string lower(bytes);
  for (char& c : lower) {
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c + ('a' - 'A'));
  }
  return lower;
}
