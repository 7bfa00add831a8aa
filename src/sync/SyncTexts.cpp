// SPDX-License-Identifier: GPL-3.0-or-later
#include "sync/SyncTexts.h"

#include "text/Numbers.h"

namespace {

constexpr TextView kDefaultTitle = u"Tavrollo";
constexpr TextView kSyncTitle = u"Tavrollo : Synchroniser";

Text countText(std::size_t count) { return numberText(static_cast<std::int64_t>(count)); }

TextView plural(std::size_t count) { return count < 2 ? u"" : u"s"; }

Text counted(std::size_t count, TextView one) {
  return countText(count).append(u" ").append(one).append(plural(count));
}

Text reason(const Obstacle& obstacle) {
  switch (obstacle.kind) {
    case ObstacleKind::FolderLink: return u"lien vers un dossier";
    case ObstacleKind::Special: return u"ni fichier ni dossier";
    case ObstacleKind::Unreadable: break;
  }
  return obstacle.failure.description;
}

}  // namespace

Box folderMissingBox(const Text& root) {
  return {.title = Text(kDefaultTitle),
          .text = u"Le dossier : " + root +
                  u" n'existe pas\r\n\n"
                  u"Vérifiez le nom du dossier et essayez de nouveau",
          .icon = BoxIcon::Critical};
}

Box shortcutCopyFailedBox() {
  return {.title = Text(kSyncTitle),
          .text = u"Bizarre...\r\n\r\n"
                  u"Impossible de trouver shortQrCode.js...\r\n"
                  u"Refaites un essai SVP.",
          .icon = BoxIcon::Exclamation};
}

Box createSubDirBox(const Failure& failure) {
  return {.title = Text(kDefaultTitle),
          .text = u"Erreur dans CreateSubDir\n" + failure.description};
}

Box foldersOverlapBox(const Text& backupRoot) {
  return {.title = Text(kSyncTitle),
          .text = u"Le dossier de la sauvegarde ne peut être ni dans user_datas, ni autour :\r\n" +
                  backupRoot + u"\r\n\r\nChoisissez un autre dossier.",
          .icon = BoxIcon::Exclamation};
}

Box insertDriveBox() {
  return {.title = u"Tavrollo : Synchronisation de la sauvegarde",
          .text = u"Insérez d'abord votre clé USB ou votre support amovible avant d'effectuer la "
                  u"sauvegarde.\r\n\r\nCliquez sur Ok quand vous êtes prêt(e).",
          .icon = BoxIcon::Information,
          .buttons = BoxButtons::OkCancel};
}

// There is no blank behind the path: it mostly ends with a separator.
Box backupFolderMissingBox(const Text& backupPath) {
  return {.title = Text(kSyncTitle),
          .text = u"Le dossier " + backupPath + u"est introuvable",
          .icon = BoxIcon::Exclamation};
}

Text resultText(std::size_t count) {
  return Text(u"Résultat : ")
      .append(counted(count, u"fichier"))
      .append(u" trouvé")
      .append(plural(count));
}

Text identicalText(bool firstComparison) {
  return firstComparison ? u"Les 2 côtés sont identiques. Rien à synchroniser."
                         : u"Les 2 côtés sont identiques. Plus rien à synchroniser.";
}

Text obstacleLine(const Text& root, const Obstacle& obstacle) {
  return u"Synchronisation - non comparé : " + root + nativeText(obstacle.path) + u" : " +
         reason(obstacle);
}

Text notCopiedLine(const Text& path, const Failure& failure) {
  return u"Synchronisation - non copié : " + path + u" : " + failure.description;
}

Text withheldLine(std::size_t count) {
  return u"Synchronisation - l'autre côté n'est pas connu : " + counted(count, u"fichier");
}

Text copiedLine(std::size_t copied, std::size_t failed) {
  return Text(u"Synchronisation : ")
      .append(counted(copied, u"fichier"))
      .append(u" copié")
      .append(plural(copied))
      .append(u", ")
      .append(countText(failed))
      .append(u" non copié")
      .append(plural(failed));
}

Text notComparedLine(std::size_t notCompared) {
  return u"Synchronisation : " + counted(notCompared, u"non comparé");
}

Text reportLine(std::size_t copied, std::size_t failed, std::size_t notCompared) {
  Text line = copiedLine(copied, failed);
  if (notCompared > 0) line.append(u", ").append(counted(notCompared, u"non comparé"));
  return line;
}
