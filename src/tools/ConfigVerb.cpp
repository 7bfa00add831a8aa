// SPDX-License-Identifier: GPL-3.0-or-later
#include "config/ConfigFile.h"
#include "text/Numbers.h"
#include "text/Utf.h"
#include "tools/Verbs.h"

namespace {

constexpr std::string_view kUsage =
    "Usage : tavrolloctl config FICHIER\n"
    "Affiche les réglages d'un fichier config.cfg, tels qu'ils y sont : une ligne par réglage,\n"
    "son nom, une tabulation, sa valeur.\n"
    "Code de retour : 0 affiché, 2 illisible ou incomplet.\n";

void writeLine(std::ostream& out, std::string_view name, const Text& value) {
  out << name << '\t' << toUtf8Lossless(value) << '\n';
}

void writeSettings(std::ostream& out, const Settings& settings, const LocaleData& locale) {
  writeLine(out, "browser", numberText(std::int64_t{settings.browser}));
  writeLine(out, "cookies", settings.cookiesPath);
  writeLine(out, "interval", numberText(std::int64_t{settings.pollInterval}));
  writeLine(out, "shortcuts", settings.shortcutPath);
  writeLine(out, "scaleX", numberText(settings.scaleX, locale));
  writeLine(out, "scaleY", numberText(settings.scaleY, locale));
  writeLine(out, "notifications", numberText(std::int64_t{settings.notifications}));
  writeLine(out, "backup", settings.backupPath);
}

}  // namespace

int configVerb(const std::vector<std::string>& arguments, std::ostream& out, std::ostream& err) {
  std::string bytes;
  int status = kDone;
  if (!readArgumentFile(arguments, kUsage, out, err, bytes, status)) return status;

  Settings settings;
  if (!readConfig(bytes, frenchLocale(), settings, nullptr)) {
    err << "Le fichier " << arguments[0]
        << " n'est pas un config.cfg complet : il finit trop tôt ou un nombre n'y est pas "
           "valable.\n";
    return kFailed;
  }
  writeSettings(out, settings, frenchLocale());
  return kDone;
}
