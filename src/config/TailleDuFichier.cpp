// SPDX-License-Identifier: GPL-3.0-or-later
#include "config/TailleDuFichier.h"

#include "text/Numbers.h"

namespace {

constexpr std::uint64_t kKo = 1024;
constexpr std::uint64_t kMo = kKo * 1024;
constexpr std::uint64_t kGo = kMo * 1024;

Text inUnits(std::uint64_t bytes, std::uint64_t unit, TextView name, const LocaleData& locale) {
  const double units = static_cast<double>(bytes) / static_cast<double>(unit);
  return groupedNumberText(units, locale).append(name);
}

}  // namespace

namespace storesearch {

Text TailleDuFichier(std::uint64_t bytes, const LocaleData& locale) {
  if (bytes > kGo) return inUnits(bytes, kGo, u" Go", locale);
  if (bytes > kMo) return inUnits(bytes, kMo, u" Mo", locale);
  if (bytes > kKo) return inUnits(bytes, kKo, u" Ko", locale);
  return numberText(static_cast<std::int64_t>(bytes)) + u" octets";
}

}  // namespace storesearch
