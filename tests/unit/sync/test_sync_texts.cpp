// SPDX-License-Identifier: GPL-3.0-or-later
#include <cerrno>
#include <gtest/gtest.h>

#include "SyncSupport.h"
#include "sync/SyncTexts.h"
#include "text/Paths.h"

namespace {

TEST(SyncTexts, AMissingFolder) {
  EXPECT_EQ(
      folderMissingBox(u"E:\\Sauvegarde\\"),
      (Box{.title = u"Tavrollo",
           .text = u"Le dossier : E:\\Sauvegarde\\ n'existe pas\r\n\nVérifiez le nom du dossier et "
                   u"essayez de nouveau",
           .icon = BoxIcon::Critical}));
}

TEST(SyncTexts, AShortcutTableThatCannotBeCopied) {
  EXPECT_EQ(
      shortcutCopyFailedBox(),
      (Box{.title = u"Tavrollo : Synchroniser",
           .text =
               u"Bizarre...\r\n\r\nImpossible de trouver shortQrCode.js...\r\nRefaites un essai "
               u"SVP.",
           .icon = BoxIcon::Exclamation}));
}

TEST(SyncTexts, AFolderThatCannotBeMade) {
  EXPECT_EQ(createSubDirBox(failureFromErrno(EACCES)),
            (Box{.title = u"Tavrollo", .text = u"Erreur dans CreateSubDir\nPermission refusée"}));
}

TEST(SyncTexts, ABackupInTheUsersFiles) {
  const Box box = foldersOverlapBox(u"/a/");
  EXPECT_EQ(box.title, u"Tavrollo : Synchroniser");
  EXPECT_EQ(box.text,
            u"Le dossier de la sauvegarde ne peut être ni dans user_datas, ni autour :\r\n/a/"
            u"\r\n\r\nChoisissez un autre dossier.");
  EXPECT_EQ(box.icon, BoxIcon::Exclamation);
}

TEST(SyncTexts, TheQuestionBeforeTheWindow) {
  EXPECT_EQ(insertDriveBox(),
            (Box{.title = u"Tavrollo : Synchronisation de la sauvegarde",
                 .text = u"Insérez d'abord votre clé USB ou votre support amovible avant "
                         u"d'effectuer la sauvegarde.\r\n\r\nCliquez sur Ok quand vous êtes "
                         u"prêt(e).",
                 .icon = BoxIcon::Information,
                 .buttons = BoxButtons::OkCancel}));
}

TEST(SyncTexts, ABackupFolderThatCannotBeOpened) {
  EXPECT_EQ(backupFolderMissingBox(u"E:\\Sauvegarde\\"),
            (Box{.title = u"Tavrollo : Synchroniser",
                 .text = u"Le dossier E:\\Sauvegarde\\est introuvable",
                 .icon = BoxIcon::Exclamation}));
}

TEST(SyncTexts, StatusLines) {
  EXPECT_EQ(kNothingListed, u"Résultat : fichier(s) trouvé(s)");
  EXPECT_EQ(kListingDone, u"Recherche terminée");
  EXPECT_EQ(kSyncDone, u"Synchro terminée !");
  EXPECT_EQ(kCloseWithoutSync, u"Cliquez pour fermer sans synchroniser.");
  EXPECT_EQ(identicalText(true), u"Les 2 côtés sont identiques. Rien à synchroniser.");
  EXPECT_EQ(identicalText(false), u"Les 2 côtés sont identiques. Plus rien à synchroniser.");
}

TEST(SyncTexts, NoneAndOneFileAreSingular) {
  EXPECT_EQ(resultText(0), u"Résultat : 0 fichier trouvé");
  EXPECT_EQ(resultText(1), u"Résultat : 1 fichier trouvé");
  EXPECT_EQ(resultText(2), u"Résultat : 2 fichiers trouvés");
  EXPECT_EQ(resultText(7), u"Résultat : 7 fichiers trouvés");
}

TEST(SyncTexts, TraceLines) {
  const Obstacle link{.path = native("a/b"), .kind = ObstacleKind::FolderLink};
  EXPECT_EQ(obstacleLine(u"/r/", link), u"Synchronisation - non comparé : /r/" +
                                            nativePath(u"a/b") + u" : lien vers un dossier");
  const Obstacle pipe{.path = native("p"), .kind = ObstacleKind::Special};
  EXPECT_EQ(obstacleLine(u"/r/", pipe),
            u"Synchronisation - non comparé : /r/p : ni fichier ni dossier");
  const Obstacle closed{
      .path = {}, .kind = ObstacleKind::Unreadable, .failure = failureFromErrno(EACCES)};
  EXPECT_EQ(obstacleLine(u"/r/", closed),
            u"Synchronisation - non comparé : /r/ : Permission refusée");
  EXPECT_EQ(notCopiedLine(u"/r/a", failureFromErrno(ENOSPC)),
            u"Synchronisation - non copié : /r/a : Disque plein");
  EXPECT_EQ(withheldLine(1), u"Synchronisation - l'autre côté n'est pas connu : 1 fichier");
  EXPECT_EQ(withheldLine(2), u"Synchronisation - l'autre côté n'est pas connu : 2 fichiers");
  EXPECT_EQ(kNoWebRoot,
            u"Synchronisation - user_datas n'est pas connu : shortQrCode.js n'est pas dans "
            u"res_css\\js");
  EXPECT_EQ(kLiveTableChanged,
            u"Synchronisation - shortQrCode.js n'est pas restauré : celui en service a changé "
            u"depuis la comparaison");
  EXPECT_EQ(kLiveTableStayed,
            u"Synchronisation - shortQrCode.js n'est pas restauré : celui en service n'a pas pu "
            u"être copié dans user_datas");
  EXPECT_EQ(copiedLine(1, 0), u"Synchronisation : 1 fichier copié, 0 non copié");
  EXPECT_EQ(copiedLine(2, 3), u"Synchronisation : 2 fichiers copiés, 3 non copiés");
  EXPECT_EQ(notComparedLine(1), u"Synchronisation : 1 non comparé");
  EXPECT_EQ(notComparedLine(2), u"Synchronisation : 2 non comparés");
  EXPECT_EQ(reportLine(2, 3, 0), copiedLine(2, 3));
  EXPECT_EQ(reportLine(2, 1, 1),
            u"Synchronisation : 2 fichiers copiés, 1 non copié, 1 non comparé");
  EXPECT_EQ(reportLine(0, 0, 2), u"Synchronisation : 0 fichier copié, 0 non copié, 2 non comparés");
}

}  // namespace
