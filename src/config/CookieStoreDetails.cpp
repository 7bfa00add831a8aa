// SPDX-License-Identifier: GPL-3.0-or-later
#include "config/CookieStoreDetails.h"

#include <algorithm>

#include "config/TailleDuFichier.h"
#include "platform/Files.h"

Text cookieStoreDetails(const Text& path, const LocaleData& locale) {
  constexpr std::int64_t kNanosecondsPerSecond = 1'000'000'000;
  const std::optional<FileStamp> store = fileStamp(path);
  if (!store) return {};
  const std::optional<FileStamp> log = fileStamp(path + u"-wal");
  const std::int64_t written = std::max(store->modified, log ? log->modified : 0);

  const auto second = static_cast<std::time_t>(written / kNanosecondsPerSecond);
  const LocaleData time{locale.decimalSeparator, "%H:%M:%S"};
  return storesearch::TailleDuFichier(store->size, locale) + u", dernière écriture le " +
         dateText(second, locale) + u" à " + dateText(second, time);
}
