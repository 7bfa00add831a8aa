// SPDX-License-Identifier: GPL-3.0-or-later
#include "config/OptionsBoxes.h"

#include <gtest/gtest.h>

namespace {

const struct {
  Box box;
  Box expected;
} kRows[] = {
    {cookieStoreRejectedBox(),
     {u"Tavrollo : Impossible d'accéder au fichier Cookies choisi",
      u"Oups...\r\nimpossible d'accéder au fichier Cookies.\r\nSoit le chemin n'est pas bon, soit ce fichier n'existe pas, soit il est inaccessible.\r\n\r\nCliquez sur \"Oui\" pour modifier les paramètres\r\nCliquez sur \"Non\" pour quitter Tavrollo (Le programme s'arrêtera)",
      BoxIcon::Exclamation, BoxButtons::YesNo, Answer::Yes}},
    {firstRowStaysBox(),
     {u"qrCode - Supprimer des raccourcis QrCode", u"La première ligne ne peut pas être supprimée.",
      BoxIcon::Information, BoxButtons::Ok, Answer::Ok}},
    {autostartBox({.number = 70, .description = u"Accès refusé : /x"}),
     {u"Tavrollo : lancement automatique",
      u"Impossible de changer le lancement à l'ouverture de la session :\r\nAccès refusé : /x",
      BoxIcon::Exclamation, BoxButtons::Ok, Answer::Ok}},
};

}  // namespace

TEST(OptionsBoxes, AreExactToTheCharacter) {
  for (const auto& row : kRows) {
    EXPECT_EQ(row.box.title, row.expected.title);
    EXPECT_EQ(row.box.text, row.expected.text);
    EXPECT_EQ(row.box.icon, row.expected.icon);
    EXPECT_EQ(row.box.buttons, row.expected.buttons);
    EXPECT_EQ(row.box.defaultAnswer, row.expected.defaultAnswer);
  }
}
