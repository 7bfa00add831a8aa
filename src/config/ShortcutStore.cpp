// SPDX-License-Identifier: GPL-3.0-or-later
#include "config/ShortcutStore.h"

#include <string>

#include "config/ConfigBoxes.h"
#include "config/ShortcutFile.h"
#include "platform/Files.h"
#include "text/Numbers.h"
#include "text/Paths.h"

namespace {

constexpr std::int32_t kFirstFreeId = 2;

bool readTable(const Text& path, ShortcutTable& table, const LocaleData& locale) {
  std::string bytes;
  if (readFile(path, bytes)) return false;
  return parseShortcuts(bytes, table, locale);
}

// False, and the reason is shown, when there is a file at the table's place and no copy of it could
// be made: it is all that the user has.
bool backUpWhatStands(const Settings& settings, const Text& programFolder, Questions& questions) {
  if (!somethingAt(settings.shortcutPath)) return true;
  const Failure failure = backUpShortcuts(settings, programFolder);
  if (!failure) return true;
  questions.ask(errorBox(u"backUpShortcuts", failure.description));
  return false;
}

}  // namespace

Text defaultShortcutPath(const Text& programFolder) {
  return programFolder + nativePath(u"\\nav\\res_css\\js\\shortQrCode.js");
}

void MAJshortQrCodeJs(const Text& programFolder) {
  const Text example = programFolder + nativePath(u"\\shortQrCode_exemple.js");
  const Text place = defaultShortcutPath(programFolder);
  if (!FileExists(example) || somethingAt(place)) return;
  copyFile(example, place);
}

ShortcutLoad loadShortcuts(Settings& settings, ShortcutTable& table, const Text& programFolder,
                           const LocaleData& locale, Questions& questions) {
  if (!somethingAt(settings.shortcutPath)) {
    settings.shortcutPath = defaultShortcutPath(programFolder);
    questions.ask(shortcutsNotFoundBox(settings.shortcutPath));
  }
  table.setSource(settings.shortcutPath);
  if (readTable(settings.shortcutPath, table, locale)) return ShortcutLoad::Loaded;

  const bool wanted = questions.ask(createShortcutsBox()) == Answer::Yes;
  if (!wanted || !backUpWhatStands(settings, programFolder, questions)) {
    questions.ask(shortcutsMissingBox());
    return ShortcutLoad::Ended;
  }
  table.load(kFirstFreeId, {{u"000000001", u"ligne init", u"locfile:///C:/essai.txt"}});
  RecShortQrCode(settings, table, questions);
  return ShortcutLoad::Created;
}

bool RecShortQrCode(const Settings& settings, const ShortcutTable& table, Questions& questions) {
  if (!table.wasLoaded()) return false;
  if (!replaceFile(settings.shortcutPath, shortcutBytes(table))) return true;
  questions.ask(shortcutsWriteFailedBox());
  return false;
}

Text shortcutCaption(std::size_t count) {
  const Text plural = count == 1 ? u"" : u"s";
  return u"QrCodes : " + numberText(static_cast<std::int64_t>(count)) + u" Raccourci" + plural +
         u" créé" + plural;
}

Failure backUpShortcuts(const Settings& settings, const Text& programFolder) {
  return copyFile(settings.shortcutPath, nextBackupPath(programFolder));
}

Text nextBackupPath(const Text& programFolder) {
  const Text begin = programFolder + nativePath(u"\\nav\\res_css\\js\\shortQrCode_bak");
  for (std::int64_t number = 1;; ++number) {
    Text path = begin + numberText(number) + u".js";
    if (!somethingAt(path)) return path;
  }
}
