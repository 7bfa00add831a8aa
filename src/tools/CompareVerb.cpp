// SPDX-License-Identifier: GPL-3.0-or-later
#include "text/Utf.h"
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

struct Request {
  std::vector<std::string> folders;
  Text pattern;
};

bool parseRequest(const std::vector<std::string>& arguments, Request& request) {
  for (std::size_t i = 0; i < arguments.size(); ++i) {
    const bool hasNext = i + 1 < arguments.size();
    if (arguments[i] == "--filter" && hasNext) {
      request.pattern = fromUtf8Lossless(arguments[++i]);
    } else if (!arguments[i].empty() && !arguments[i].starts_with('-')) {
      request.folders.push_back(arguments[i]);
    } else {
      return false;
    }
  }
  return request.folders.size() == 2;
}

}  // namespace

int compareVerb(const std::vector<std::string>& arguments, std::ostream& out, std::ostream& err) {
  if (asksForHelp(arguments)) {
    out << kUsage;
    return kDone;
  }
  Request request;
  if (!parseRequest(arguments, request)) {
    err << kUsage;
    return kFailed;
  }
  FolderPair pair;
  if (!compareFolders(request.folders[0], request.folders[1], request.pattern, err, pair)) {
    return kFailed;
  }
  for (const DifferenceRow& row : pair.table.rows) writeRow(out, pair, row);
  if (pair.isPartlyUnknown()) return kFailed;
  return pair.table.rows.empty() ? kDone : kDifferent;
}
