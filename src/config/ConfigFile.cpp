// SPDX-License-Identifier: GPL-3.0-or-later
#include "config/ConfigFile.h"

#include <optional>

#include "config/ConfigBoxes.h"
#include "config/ItemReader.h"
#include "config/ShortcutStore.h"
#include "config/StoredField.h"
#include "platform/Files.h"
#include "text/AnsiCodePage.h"
#include "text/Numbers.h"
#include "text/Paths.h"
#include "text/StoredText.h"

namespace {

constexpr double kUnitsPerCentimetre = 567.0;

std::string numberBytes(std::int64_t number) { return toAnsi(numberText(number)); }

std::string numberBytes(double number, const LocaleData& locale) {
  return toAnsi(numberText(number, locale));
}

// The items of config.cfg as the values that the settings need.
class ValueReader {
 public:
  ValueReader(std::string_view bytes, const LocaleData& locale) : items_(bytes), locale_(locale) {}

  bool discard(int count) {
    for (int i = 0; i < count; ++i) {
      if (!items_.next()) return false;
    }
    return true;
  }

  bool read(Text& value) {
    const auto item = items_.next();
    if (!item) return false;
    value = fromStoredText(*item);
    return true;
  }

  bool read(std::int16_t& value) { return keep(toInt16(nextText(), locale_), value); }

  bool read(std::int32_t& value) { return keep(toInt32(nextText(), locale_), value); }

  bool readScale(double& value) { return keep(toInt32(nextText(), locale_), value); }

 private:
  // A missing item becomes "", which is no number.
  Text nextText() { return fromStoredText(items_.next().value_or(std::string_view())); }

  template <class Read, class Value>
  static bool keep(const std::optional<Read>& read, Value& value) {
    if (!read) return false;
    value = *read;
    return true;
  }

  ItemReader items_;
  const LocaleData& locale_;
};

bool readNotifications(ValueReader& values, std::int16_t& notifications) {
  std::int16_t state = 0;
  if (!values.read(state) || state < 0 || state > 2) return false;
  notifications = state;
  return true;
}

}  // namespace

Text configPath(const Text& programFolder) { return programFolder + nativePath(u"\\config.cfg"); }

void prepareForReading(Settings& settings, const Text& programFolder) {
  settings.shortcutPath = defaultShortcutPath(programFolder);
  settings.scaleX = kUnitsPerCentimetre;
  settings.scaleY = kUnitsPerCentimetre;
}

std::string configBytes(const Settings& settings, const LocaleData& locale) {
  std::string bytes;
  const auto comment = [&bytes](TextView text) { bytes += toAnsi(text) + "\r\n"; };
  const auto value = [&bytes](const std::string& text) { bytes += text + "\r\n"; };

  comment(u";Tavrollo - Fichier de Configuration du programme exécutable Tavrollo.exe");
  comment(u";ATTENTION : Ne modifiez ce fichier que si vous savez ce que vous faites !");
  comment(u";-------------------------------------------------------------------------");
  comment(
      u";choix du navigateur internet entrez un nombre : 0 pour fireFox ( >50.0 de nov 2016)  1 "
      u"pour googleChrome ( >54 de oct 2016)");
  value(numberBytes(settings.browser));
  comment(u";entrez le chemin des cookies correspondant au système d'exploitation et du navigateur "
          u"choisi");
  value(storedField(settings.cookiesPath));
  comment(
      u";entrez la temporisation en milli secondes entre deux tests de changements effectué sur le "
      u"fichier cookies");
  value(numberBytes(settings.pollInterval));
  comment(u";chemin du fichier shortQrCode.js   qui se trouve dans \\nav\\res_css\\js");
  value(storedField(settings.shortcutPath));
  comment(u";Echelle d'affichage graphique X (567 par défaut)");
  value(numberBytes(settings.scaleX, locale));
  comment(u";Echelle d'affichage graphique Y (567 par défaut)");
  value(numberBytes(settings.scaleY, locale));
  comment(u";Afficher les messages barre de taches 0 non 1 oui");
  value(numberBytes(settings.notifications));
  comment(u";Dernier chemin de la sauvegarde (Synchronisation)");
  value(storedField(settings.backupPath));
  comment(u";------------------------------------");
  comment(u";");
  comment(u";");
  comment(u";Hugo Pelleriac - novembre 2016");
  return bytes;
}

bool readConfig(std::string_view bytes, const LocaleData& locale, Settings& settings,
                const std::function<void()>& shortcutPathRead) {
  ValueReader values(bytes, locale);
  if (!values.discard(4) || !values.read(settings.browser)) return false;
  if (!values.discard(1) || !values.read(settings.cookiesPath)) return false;
  if (!values.discard(1) || !values.read(settings.pollInterval)) return false;
  if (!values.discard(1) || !values.read(settings.shortcutPath)) return false;
  if (shortcutPathRead) shortcutPathRead();
  if (!values.discard(1) || !values.readScale(settings.scaleX)) return false;
  if (!values.discard(1) || !values.readScale(settings.scaleY)) return false;
  if (!values.discard(1) || !readNotifications(values, settings.notifications)) return false;
  return values.discard(1) && values.read(settings.backupPath);
}

bool RecConfig(const Text& programFolder, const Settings& settings, const LocaleData& locale,
               Questions& questions) {
  if (!replaceFile(configPath(programFolder), configBytes(settings, locale))) return true;
  questions.ask(configWriteFailedBox());
  return false;
}
