// SPDX-License-Identifier: GPL-3.0-or-later
#include "config/ShortcutFile.h"
#include "text/Numbers.h"
#include "text/Utf.h"
#include "tools/Verbs.h"

namespace {

constexpr std::string_view kUsage =
    "Usage : tavrolloctl shortcuts FICHIER\n"
    "Affiche les raccourcis d'un fichier shortQrCode.js : FreeId et sa valeur, puis une ligne par\n"
    "raccourci, sa clé, son nom et son adresse, séparés par des tabulations.\n"
    "Code de retour : 0 affiché, 2 illisible ou incomplet.\n";

void writeTable(std::ostream& out, const ShortcutTable& table) {
  out << "FreeId\t" << toUtf8(numberText(std::int64_t{table.freeId()})) << '\n';
  for (const Shortcut& shortcut : table.rows()) {
    out << toUtf8Lossless(shortcut.key) << '\t' << toUtf8Lossless(shortcut.name) << '\t'
        << toUtf8Lossless(shortcut.address) << '\n';
  }
}

}  // namespace

int shortcutsVerb(const std::vector<std::string>& arguments, std::ostream& out, std::ostream& err) {
  std::string bytes;
  int status = kDone;
  if (!readArgumentFile(arguments, kUsage, out, err, bytes, status)) return status;

  ShortcutTable table;
  if (!parseShortcuts(bytes, table, frenchLocale())) {
    err << "Le fichier " << arguments[0] << " n'est pas une table de raccourcis complète.\n";
    return kFailed;
  }
  writeTable(out, table);
  return kDone;
}
