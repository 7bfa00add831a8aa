// SPDX-License-Identifier: GPL-3.0-or-later
#include "sync/FolderSync.h"

#include <filesystem>
#include <system_error>

#include "sync/SyncPaths.h"
#include "sync/SyncTexts.h"
#include "sync/modCopyFile.h"
#include "text/Paths.h"

FolderSync::Outcome FolderSync::compare(const Text& webRoot, const Text& backupPath,
                                        const Text& pattern) {
  ViderListe(source_);
  ViderListe(backup_);
  ViderGrille(table_);
  webRoot_ = webRoot;
  backupRoot_ = AjouterAntislash(backupPath);
  if (webRoot.empty()) {  // else the current folder would be taken for it
    progress_.trace(Text(kNoWebRoot));
    questions_.ask(folderMissingBox(userFilesRoot(webRoot)));
    return Outcome::Refused;
  }
  if (foldersOverlap(userFilesRoot(webRoot), backupRoot_)) {
    questions_.ask(foldersOverlapBox(backupRoot_));
    return Outcome::Refused;
  }

  const Box box = shortcutCopyFailedBox();
  liveTable_ = fileStamp(liveShortcutTable(webRoot));
  liveTravels_ = copyTable(liveShortcutTable(webRoot), travellingShortcutTable(webRoot), &box);
  source_ = LancerLaRecherche_FSO(1, pattern);
  if (!source_.stopped) backup_ = LancerLaRecherche_FSO(2, pattern);
  if (source_.stopped || backup_.stopped) return Outcome::Stopped;

  removeLeftovers(source_);
  removeLeftovers(backup_);
  table_ = compareListings(source_, backup_);
  if (table_.withheld > 0) progress_.trace(withheldLine(table_.withheld));
  if (!table_.rows.empty()) return Outcome::Different;
  return notCompared() > 0 ? Outcome::Unknown : Outcome::Identical;
}

SyncReport FolderSync::synchronise() {
  if (webRoot_.empty()) return {};
  SyncReport report = executeRows(source_, backup_, table_.rows, questions_, progress_);
  std::string before;
  std::string after;
  firstComparison_ = false;
  const Text live = liveShortcutTable(webRoot_);
  if (fileStamp(live) != liveTable_) {
    progress_.trace(Text(kLiveTableChanged));
    return report;
  }
  // What stands among the user's files may then be older than the live one.
  if (liveTable_ && !liveTravels_) {
    progress_.trace(Text(kLiveTableStayed));
    return report;
  }
  readFile(live, before);
  copyTable(travellingShortcutTable(webRoot_), live, nullptr);
  readFile(live, after);
  report.shortcutsRestored = before != after;
  return report;
}

void FolderSync::removeTravellingTable(const Text& webRoot) {
  if (webRoot.empty()) return;
  std::error_code unknown;
  if (!std::filesystem::is_regular_file(toPath(liveShortcutTable(webRoot)), unknown)) return;
  std::error_code ignored;
  std::filesystem::remove(toPath(travellingShortcutTable(webRoot)), ignored);
}

bool FolderSync::copyTable(const Text& from, const Text& to, const Box* box) {
  Failure failure;
  if (CopierFichier(from, to, 0, questions_, &failure)) return true;
  progress_.trace(notCopiedLine(from, failure));
  if (box) questions_.ask(*box);
  return false;
}

// Side 1 is the source, any other the backup.
Listing FolderSync::LancerLaRecherche_FSO(std::int16_t id, const Text& Filtre) {
  const Side side = id == 1 ? Side::Source : Side::Backup;
  const Text root = id == 1 ? userFilesRoot(webRoot_) : backupRoot_;
  Listing listing = listFolder(root, Filtre, side, progress_);
  const bool notOpened =
      listing.rootMissing || (listing.obstacles.size() == 1 && listing.obstacles[0].path.empty());
  if (notOpened) questions_.ask(folderMissingBox(root));
  return listing;
}
