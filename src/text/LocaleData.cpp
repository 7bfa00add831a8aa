// SPDX-License-Identifier: GPL-3.0-or-later
#include "text/LocaleData.h"

#include <array>

#include "text/Utf.h"

LocaleData frenchLocale() {
  return {.decimalSeparator = u',',
          .dateFormat = "%d/%m/%Y",
          .groupSeparator = u'\u00A0',
          .decimals = 2};
}

Text dateText(std::time_t time, const LocaleData& locale) {
  const std::tm* calendar = std::localtime(&time);
  if (!calendar) return {};
  std::array<char, 128> text{};
  const std::size_t length =
      std::strftime(text.data(), text.size(), locale.dateFormat.c_str(), calendar);
  return fromUtf8({text.data(), length});
}
