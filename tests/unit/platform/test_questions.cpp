// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/Questions.h"

#include <gtest/gtest.h>

TEST(ErrorBox, NamesTheHandlerAndBelowItWhatHappened) {
  const Box box = errorBox(u"cmdOk_Click", u"Fichier introuvable");
  EXPECT_EQ(box.title, u"Tavrollo");
  EXPECT_EQ(box.text, u"Erreur dans cmdOk_Click\r\nFichier introuvable");
  EXPECT_EQ(box.icon, BoxIcon::Exclamation);
  EXPECT_EQ(box.buttons, BoxButtons::Ok);
}
