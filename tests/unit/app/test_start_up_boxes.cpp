// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include "app/StartUpBoxes.h"

namespace {

TEST(StartUpBoxes, AlreadyRunning) {
  const Box box = alreadyRunningBox();
  EXPECT_EQ(box.title, u"Tavrollo : Lancements multiples");
  EXPECT_EQ(box.text,
            u"Tavrollo est déjà lancé.\r\n\r\nVoulez-vous relancer l'application ? (utile si "
            u"l'icône de la barre de tâches a disparu)");
  EXPECT_EQ(box.icon, BoxIcon::Question);
  EXPECT_EQ(box.buttons, BoxButtons::YesNo);
  EXPECT_EQ(box.defaultAnswer, Answer::Yes);
}

TEST(StartUpBoxes, FirefoxDefaultJoinsItsLastTwoSentences) {
  const Box box = firefoxDefaultBox();
  EXPECT_EQ(box.title, u"Tavrollo : FireFox par défaut");
  EXPECT_EQ(box.text,
            u"Ce programme ne fonctionne pour l'instant qu'avec Mozilla Firefox v50 >\r\n"
            u"Si vous l'avez installé, il est recommandé de le définir comme navigateur par défaut"
            u"\r\n\r\nVoulez-vous que Firefox soit votre navigateur par défaut ?(Cliquez sur "
            u"Annuler pour Quitter le programme Tavrollo)");
  EXPECT_EQ(box.icon, BoxIcon::Exclamation);
  EXPECT_EQ(box.buttons, BoxButtons::YesNoCancel);
  EXPECT_EQ(box.defaultAnswer, Answer::Yes);
}

TEST(StartUpBoxes, QuitBreaksItsLinesWithCarriageReturnsAndProposesNo) {
  const Box box = quitBox();
  EXPECT_EQ(box.title, u"Tavrollo");
  EXPECT_EQ(box.text,
            u"Voulez-vous vraiment quitter Tavrollo ?\r(Les applications ne seront plus lancées à "
            u"partir d'un Qr-Code.)\r");
  EXPECT_EQ(box.icon, BoxIcon::Exclamation);
  EXPECT_EQ(box.buttons, BoxButtons::YesNo);
  EXPECT_EQ(box.defaultAnswer, Answer::No);
}

TEST(StartUpBoxes, NoTraySaysWhereTheMenuIs) {
  const Box box = noTrayBox();
  EXPECT_EQ(box.title, u"Tavrollo : zone de notification");
  EXPECT_EQ(box.text,
            u"Ce bureau n'a pas de zone de notification : l'icône de Tavrollo ne peut pas s'y "
            u"afficher.\r\n\r\nLe menu de Tavrollo se trouve dans une petite fenêtre.");
  EXPECT_EQ(box.icon, BoxIcon::Information);
  EXPECT_EQ(box.buttons, BoxButtons::Ok);
}

}  // namespace
