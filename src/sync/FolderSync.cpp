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
  const Text sourceRoot = userFilesRoot(webRoot);
  const Text backupRoot = AjouterAntislash(backupPath);
  if (foldersOverlap(sourceRoot, backupRoot)) {
    questions_.ask(foldersOverlapBox(backupRoot));
    return Outcome::Refused;
  }

  const Box box = shortcutCopyFailedBox();
  copyTable(liveShortcutTable(webRoot), travellingShortcutTable(webRoot), &box);
  source_ = list(sourceRoot, pattern, Side::Source);
  if (!source_.stopped) backup_ = list(backupRoot, pattern, Side::Backup);
  if (source_.stopped || backup_.stopped) return Outcome::Stopped;

  removeLeftovers(source_);
  removeLeftovers(backup_);
  table_ = compareListings(source_, backup_);
  if (table_.withheld > 0) progress_.trace(withheldLine(table_.withheld));
  return table_.rows.empty() ? Outcome::Identical : Outcome::Different;
}

SyncReport FolderSync::synchronise() {
  SyncReport report = executeRows(source_, backup_, table_.rows, questions_, progress_);
  copyTable(travellingShortcutTable(webRoot_), liveShortcutTable(webRoot_), nullptr);
  firstComparison_ = false;
  return report;
}

void FolderSync::removeTravellingTable(const Text& webRoot) {
  std::error_code ignored;
  std::filesystem::remove(toPath(travellingShortcutTable(webRoot)), ignored);
}

void FolderSync::copyTable(const Text& from, const Text& to, const Box* box) {
  Failure failure;
  if (CopierFichier(from, to, 0, questions_, &failure)) return;
  progress_.trace(notCopiedLine(from, failure));
  if (box) questions_.ask(*box);
}

Listing FolderSync::list(const Text& root, const Text& pattern, Side side) {
  Listing listing = listFolder(root, pattern, side, progress_);
  const bool notOpened =
      listing.rootMissing || (listing.obstacles.size() == 1 && listing.obstacles[0].path.empty());
  if (notOpened) questions_.ask(folderMissingBox(root));
  return listing;
}
