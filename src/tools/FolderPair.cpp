// SPDX-License-Identifier: GPL-3.0-or-later
#include "tools/FolderPair.h"

#include "sync/DifferenceGrid.h"
#include "sync/SyncPaths.h"
#include "sync/SyncTexts.h"
#include "text/Utf.h"
#include "tools/Verbs.h"

namespace {

std::string escaped(const std::string& field) {
  std::string text;
  for (const char c : field) {
    switch (c) {
      case '\\': text += "\\\\"; break;
      case '\t': text += "\\t"; break;
      case '\n': text += "\\n"; break;
      case '\r': text += "\\r"; break;
      default: text += c;
    }
  }
  return text;
}

bool saysMissing(const Listing& listing, std::ostream& err) {
  if (!listing.rootMissing) return false;
  err << "Le dossier " << toUtf8Lossless(listing.root) << " n'existe pas.\n";
  return true;
}

struct FolderArguments {
  std::vector<std::string> folders;
  Text pattern;
};

bool parseArguments(const FolderVerb& verb, const std::vector<std::string>& arguments,
                    FolderArguments& parsed) {
  for (std::size_t at = 0; at < arguments.size(); ++at) {
    const std::string& argument = arguments[at];
    if (argument == "--filter" && at + 1 < arguments.size()) {
      parsed.pattern = fromUtf8Lossless(arguments[++at]);
    } else if (!argument.empty() && !argument.starts_with('-')) {
      parsed.folders.push_back(argument);
    } else if (!verb.takeOption(arguments, at)) {
      return false;
    }
  }
  return parsed.folders.size() == 2;
}

bool compareFolders(const FolderArguments& asked, std::ostream& err, FolderPair& pair) {
  const Text sourceRoot = AjouterAntislash(fromUtf8Lossless(asked.folders[0]));
  const Text backupRoot = AjouterAntislash(fromUtf8Lossless(asked.folders[1]));
  if (foldersOverlap(sourceRoot, backupRoot)) {
    err << "L'un des deux dossiers est dans l'autre.\n";
    return false;
  }
  SteadyProgress progress(err);
  pair.source = listFolder(sourceRoot, asked.pattern, Side::Source, progress);
  pair.backup = listFolder(backupRoot, asked.pattern, Side::Backup, progress);
  if (saysMissing(pair.source, err) || saysMissing(pair.backup, err)) return false;
  pair.table = compareListings(pair.source, pair.backup);
  if (pair.table.withheld > 0) progress.trace(withheldLine(pair.table.withheld));
  return true;
}

}  // namespace

void SteadyProgress::trace(const Text& line) { err_ << escaped(toUtf8Lossless(line)) << '\n'; }

bool FolderPair::isPartlyUnknown() const { return notCompared(source, backup, table) > 0; }

int runFolderVerb(const FolderVerb& verb, const std::vector<std::string>& arguments,
                  std::ostream& out, std::ostream& err) {
  if (asksForHelp(arguments)) {
    out << verb.usage;
    return kDone;
  }
  FolderArguments asked;
  if (!parseArguments(verb, arguments, asked)) {
    err << verb.usage;
    return kFailed;
  }
  FolderPair pair;
  return compareFolders(asked, err, pair) ? verb.work(pair) : kFailed;
}

void writeRow(std::ostream& out, const FolderPair& pair, const DifferenceRow& row) {
  const GridRow shown = gridRow(pair.source, pair.backup, row, frenchLocale());
  out << toUtf8(shown.cells[0]);
  for (std::size_t column = 1; column < shown.cells.size(); ++column) {
    if (column == kPictureColumn) continue;
    out << '\t' << escaped(toUtf8Lossless(shown.cells[column]));
  }
  out << '\n';
}
