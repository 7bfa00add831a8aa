// SPDX-License-Identifier: GPL-3.0-or-later
#include "config/SearchBoxes.h"

#include <gtest/gtest.h>

namespace {

const struct {
  Box box;
  Box expected;
} kRows[] = {
    {startFolderMissingBox(u"/p/a"),
     {u"Tavrollo",
      u"Le dossier : /p/a n'existe pas\r\n\nVérifiez le nom du dossier et essayez de nouveau",
      BoxIcon::Critical, BoxButtons::Ok, Answer::Ok}},
    {noCookieStoreBox(),
     {u"Tavrollo : impossible de trouver le fichier de cookies",
      u"Impossible de trouver le fichier de cookies.\r\n\r\nsoit Firefox n'est pas installé,\r\nsoit son installation n'est pas dans le dossier habituel.\r\n\r\nRecherchez ce fichier manuellement.",
      BoxIcon::Critical, BoxButtons::Ok, Answer::Ok}},
    {severalCookieStoresBox(2),
     {u"Tavrollo : fichiers de cookies multiples",
      u"2 fichiers de cookies ont été trouvés !\r\n\r\nVous devez cliquer sur la liste pour choisir le chemin du bon fichier de cookies manuellement.",
      BoxIcon::Critical, BoxButtons::Ok, Answer::Ok}},
    {confirmCookieStoreBox(u"/p/cookies.sqlite"),
     {u"Tavrollo : choisir le fichier des cookies",
      u"Vous avez cliqué sur le fichier suivant :\r\n\r\n/p/cookies.sqlite\r\n\r\nVous confirmez votre choix ?",
      BoxIcon::Question, BoxButtons::YesNo, Answer::Yes}},
    {cookieStoreHintBox(u"/p"),
     {u"Tavrollo", u"Recherchez le fichier cookies.sqlite dans\r\n/p", BoxIcon::None,
      BoxButtons::Ok, Answer::Ok}},
    {cookieStoreHintBox(u""),
     {u"Tavrollo", u"Recherchez le fichier cookies.sqlite dans\r\n", BoxIcon::None, BoxButtons::Ok,
      Answer::Ok}},
    {shortcutsReadAgainBox(12),
     {u"Tavrollo", u"relecture des infos shortQrCode.js \r\nNombre de raccourcis trouvés =12",
      BoxIcon::Information, BoxButtons::Ok, Answer::Ok}},
};

}  // namespace

TEST(SearchBoxes, AreExactToTheCharacter) {
  for (const auto& row : kRows) {
    EXPECT_EQ(row.box.title, row.expected.title);
    EXPECT_EQ(row.box.text, row.expected.text);
    EXPECT_EQ(row.box.icon, row.expected.icon);
    EXPECT_EQ(row.box.buttons, row.expected.buttons);
    EXPECT_EQ(row.box.defaultAnswer, row.expected.defaultAnswer);
  }
}

TEST(SearchTexts, TheCountHasItsPlural) {
  EXPECT_EQ(searchResultText(0), u"Résultat : 0fichier trouvé");
  EXPECT_EQ(searchResultText(1), u"Résultat : 1fichier trouvé");
  EXPECT_EQ(searchResultText(2), u"Résultat : 2fichiers trouvés");
  EXPECT_EQ(searchResultText(1234), u"Résultat : 1234fichiers trouvés");
}

TEST(SearchTexts, ABrowserThatNeverRanIsToBeStartedOnce) {
  EXPECT_EQ(
      searchAgainText(),
      u"Le navigateur crée ce fichier quand il démarre : lancez-le une fois, puis cliquez sur "
      u"« Chercher ».");
}

TEST(SearchTexts, WithAStoreTheWindowMayBeClosed) {
  EXPECT_EQ(
      storeChosenText(),
      u"Fichier choisi : il est essayé dans le navigateur. Vous pouvez fermer cette fenêtre.");
}

TEST(SearchTexts, TheEndIsTold) { EXPECT_EQ(searchEndText(), u"Recherche terminée"); }
