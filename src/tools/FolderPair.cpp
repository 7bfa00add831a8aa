// SPDX-License-Identifier: GPL-3.0-or-later
#include "tools/FolderPair.h"

#include <algorithm>

#include "sync/DifferenceGrid.h"
#include "sync/SyncPaths.h"
#include "sync/SyncTexts.h"
#include "text/Utf.h"

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

bool hasUnreadable(const Listing& listing) {
  return std::any_of(listing.obstacles.begin(), listing.obstacles.end(),
                     [](const Obstacle& o) { return o.kind == ObstacleKind::Unreadable; });
}

}  // namespace

void SteadyProgress::trace(const Text& line) { err_ << escaped(toUtf8Lossless(line)) << '\n'; }

bool FolderPair::isPartlyUnknown() const { return hasUnreadable(source) || hasUnreadable(backup); }

bool compareFolders(const std::string& source, const std::string& backup, const Text& pattern,
                    std::ostream& err, FolderPair& pair) {
  const Text sourceRoot = AjouterAntislash(fromUtf8Lossless(source));
  const Text backupRoot = AjouterAntislash(fromUtf8Lossless(backup));
  if (foldersOverlap(sourceRoot, backupRoot)) {
    err << "L'un des deux dossiers est dans l'autre.\n";
    return false;
  }
  SteadyProgress progress(err);
  pair.source = listFolder(sourceRoot, pattern, Side::Source, progress);
  pair.backup = listFolder(backupRoot, pattern, Side::Backup, progress);
  if (saysMissing(pair.source, err) || saysMissing(pair.backup, err)) return false;
  pair.table = compareListings(pair.source, pair.backup);
  if (pair.table.withheld > 0) progress.trace(withheldLine(pair.table.withheld));
  return true;
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
