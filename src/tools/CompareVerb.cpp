// SPDX-License-Identifier: GPL-3.0-or-later
#include "tools/FolderPair.h"
#include "tools/Verbs.h"

namespace {

constexpr std::string_view kUsage =
    "Usage : tavrolloctl compare SOURCE SAUVEGARDE [--filter MOTIF]\n"
    "Compare deux dossiers : une ligne par fichier qui manque d'un côté ou dont les dates diffèrent\n"
    "de plus de 5 secondes : code, puis chemin, date et poids dans la source, puis dans la\n"
    "sauvegarde, séparés par des tabulations.\n"
    "  0  seulement dans la source       1  plus récent dans la source\n"
    "  2  seulement dans la sauvegarde   3  plus récent dans la sauvegarde\n"
    "  --filter MOTIF   les fichiers dont le nom convient (* et ?) ; défaut : *.*\n"
    "Code de retour : 0 identiques, 1 différents, 2 tout n'a pas pu être comparé.\n";

}  // namespace

int compareVerb(const std::vector<std::string>& arguments, std::ostream& out, std::ostream& err) {
  const auto printRows = [&out](const FolderPair& pair) {
    for (const DifferenceRow& row : pair.table.rows) writeRow(out, pair, row);
    if (pair.isPartlyUnknown()) return kFailed;
    return pair.table.rows.empty() ? kDone : kDifferent;
  };
  const auto noOptions = [](const std::vector<std::string>&, std::size_t&) { return false; };
  return runFolderVerb({.usage = kUsage, .takeOption = noOptions, .work = printRows}, arguments,
                       out, err);
}
