// SPDX-License-Identifier: GPL-3.0-or-later
#include "config/SearchBoxes.h"

#include "text/Numbers.h"

namespace {

Text countText(std::size_t count) { return numberText(static_cast<std::int64_t>(count)); }

}  // namespace

Box startFolderMissingBox(const Text& folder) {
  return {.title = u"Tavrollo",
          .text = u"Le dossier : " + folder +
                  u" n'existe pas\r\n\n"
                  u"Vérifiez le nom du dossier et essayez de nouveau",
          .icon = BoxIcon::Critical};
}

Box noCookieStoreBox() {
  return {.title = u"Tavrollo : impossible de trouver le fichier de cookies",
          .text = u"Impossible de trouver le fichier de cookies.\r\n\r\n"
                  u"soit Firefox n'est pas installé,\r\n"
                  u"soit son installation n'est pas dans le dossier habituel.\r\n\r\n"
                  u"Recherchez ce fichier manuellement.",
          .icon = BoxIcon::Critical};
}

Box severalCookieStoresBox(std::size_t count) {
  return {.title = u"Tavrollo : fichiers de cookies multiples",
          .text = countText(count) +
                  u" fichiers de cookies ont été trouvés !\r\n\r\n"
                  u"Vous devez cliquer sur la liste pour choisir le chemin du bon fichier de "
                  u"cookies manuellement.",
          .icon = BoxIcon::Critical};
}

Box confirmCookieStoreBox(const Text& path) {
  return {.title = u"Tavrollo : choisir le fichier des cookies",
          .text = u"Vous avez cliqué sur le fichier suivant :\r\n\r\n" + path +
                  u"\r\n\r\nVous confirmez votre choix ?",
          .icon = BoxIcon::Question,
          .buttons = BoxButtons::YesNo,
          .defaultAnswer = Answer::Yes};
}

Box cookieStoreHintBox(const Text& startFolder) {
  return {.title = u"Tavrollo",
          .text = u"Recherchez le fichier cookies.sqlite dans\r\n" + startFolder};
}

Box shortcutsReadAgainBox(std::size_t count) {
  return {.title = u"Tavrollo",
          .text = u"relecture des infos shortQrCode.js \r\nNombre de raccourcis trouvés =" +
                  countText(count),
          .icon = BoxIcon::Information};
}

Text searchResultText(std::size_t count) {
  const Text plural = count < 2 ? u"" : u"s";
  return u"Résultat : " + countText(count) + u"fichier" + plural + u" trouvé" + plural;
}

Text searchEndText() { return u"Recherche terminée"; }

Text searchAgainText() {
  return u"Le navigateur crée ce fichier quand il démarre : lancez-le une fois, puis cliquez sur « Chercher ».";
}

Text storeChosenText() {
  return u"Fichier choisi : il est essayé dans le navigateur. Vous pouvez fermer cette fenêtre.";
}
