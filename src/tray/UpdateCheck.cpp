// SPDX-License-Identifier: GPL-3.0-or-later
#include "tray/UpdateCheck.h"

#include <cstdint>
#include <cstdlib>
#include <optional>
#include <string>

#include "platform/Files.h"
#include "text/AnsiCodePage.h"
#include "text/Dates.h"
#include "text/Numbers.h"
#include "text/Paths.h"
#include "text/Split.h"
#include "text/StoredText.h"

namespace {

constexpr std::int64_t kInterval = 7;  // days
constexpr TextView kNeverChecked = u"01/01/1970";
constexpr TextView kInstallerName = u"setup_Tavrollo";
constexpr TextView kProductName = u"Tavrollo";
constexpr TextView kSeparator = u"\t";
constexpr TextView kExecutableEnd = u".exe";

Text dayText(std::time_t time) {
  return dateText(time, {.decimalSeparator = u',', .dateFormat = kDayMonthYear});
}

Failure readLastCheck(const Text& path, Text& last) {
  last = kNeverChecked;
  if (!somethingAt(path)) return {};
  std::string bytes;
  if (Failure failure = readFile(path, bytes)) return failure;
  const auto lines = splitLines(bytes);
  if (lines.empty()) return failures::pastEndOfFile();
  last = fromStoredText(lines.front());
  return {};
}

// Days between two days, whichever is the later: after a clock was set back the checks go on.
Failure daysSince(const Text& last, std::time_t now, const LocaleData& locale, std::int64_t& days) {
  std::optional<std::int64_t> lastDay = dayNumber(last, kDayMonthYear);
  if (!lastDay) lastDay = dayNumber(last, locale.dateFormat);
  const std::optional<std::int64_t> today = dayNumber(dayText(now), kDayMonthYear);
  if (!lastDay || !today) return failures::typeMismatch();
  days = std::abs(*today - *lastDay);
  return {};
}

// True in `due` when the interval has passed since `last`.
Failure isDue(const Text& last, std::time_t now, const LocaleData& locale, bool& due) {
  std::int64_t days = 0;
  if (Failure failure = daysSince(last, now, locale, days)) return failure;
  due = days >= kInterval;
  return {};
}

}  // namespace

Text lastCheckPath(const Text& programFolder) {
  return programFolder + nativePath(u"\\LastDateCheckUpdate.txt");
}

std::string lastCheckBytes(std::time_t now) {
  return toAnsi(dayText(now) + u"\r\njj/mm/aaaa\r\n"
                               u"(Date de Dernière vérification de la mise à jour)\r\n");
}

ShellRequest updaterRequest(const Text& executablePath, int revision) {
  const Text folder = folderOf(executablePath) + nativeSeparator();
  const Text name = nameOf(executablePath);
  const Text ending(name.ends_with(kExecutableEnd) ? kExecutableEnd : TextView());
  const Text ownName = name.substr(0, name.rfind(u'.')) + ending;
  Text parameters(kInstallerName);
  parameters.append(kSeparator).append(numberText(std::int64_t{revision}));
  parameters.append(kSeparator).append(kProductName);
  parameters.append(kSeparator).append(parameterWord(ownName));
  return {.operation = {},
          .file = folder + u"updater" + ending,
          .parameters = parameters,
          .directory = folder};
}

Failure CheckForUpdate(bool force, std::time_t now, const UpdateSurroundings& surroundings) {
  const Text path = lastCheckPath(surroundings.programFolder);
  Text last;
  if (Failure failure = readLastCheck(path, last)) return about(failure, path);
  bool due = true;
  if (!force) {
    if (Failure failure = isDue(last, now, surroundings.locale, due)) return failure;
  }
  if (!due) return {};
  if (Failure failure = replaceFile(path, lastCheckBytes(now))) return about(failure, path);
  surroundings.shell.ShellExecute(
      updaterRequest(surroundings.executablePath, surroundings.revision));
  return {};
}
