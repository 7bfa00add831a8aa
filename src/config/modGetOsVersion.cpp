// SPDX-License-Identifier: GPL-3.0-or-later
#include "config/modGetOsVersion.h"

#include <algorithm>
#include <iterator>

#include "text/Numbers.h"

namespace {

struct KnownVersion {
  TextView key;
  TextView label;
};

// "1.4.98" is what this table always held for that edition, though it calls itself 4.90.
constexpr KnownVersion kKnownVersions[] = {
    {u"1.4.0", u"Win 95"},     {u"1.4.10", u"Win 98"},   {u"1.4.98", u"Win ME"},
    {u"2.3.51", u"Win NT 3"},  {u"2.4.0", u"Win NT 4"},  {u"2.5.0", u"Win 2000"},
    {u"2.5.1", u"Win XP"},     {u"2.6.0", u"Win Vista"}, {u"2.6.1", u"Win Seven"},
    {u"2.6.2", u"Win (8) 10"},
};

Text keyOf(const SystemVersion& version) {
  return numberText(std::int64_t{version.platform}) + u"." +
         numberText(std::int64_t{version.major}) + u"." + numberText(std::int64_t{version.minor});
}

}  // namespace

Text osVersionLabel(const SystemVersion& version) {
  const Text key = keyOf(version);
  const auto* const known = std::find_if(std::begin(kKnownVersions), std::end(kKnownVersions),
                                         [&](const KnownVersion& v) { return v.key == key; });
  return known == std::end(kKnownVersions) ? u"Unknown (" + key + u")" : Text(known->label);
}

bool isKnownWindows(TextView label) {
  return std::any_of(std::begin(kKnownVersions), std::end(kKnownVersions),
                     [&](const KnownVersion& v) { return v.label == label; });
}

Text modGetOsVersion() { return osVersionLabel(systemVersion()); }
