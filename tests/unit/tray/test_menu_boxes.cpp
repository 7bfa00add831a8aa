// SPDX-License-Identifier: GPL-3.0-or-later
#include "tray/MenuBoxes.h"

#include <gtest/gtest.h>

#include "config/Addresses.h"

TEST(MenuBoxes, RegEdit) {
  EXPECT_EQ(
      regEditBox(),
      (Box{.title = u"Tavrolo : Accès à la base de registre système",
           .text = u"Attention !\r\n\r\nVoulez allez entrer dans l'éditeur de registre "
                   u"windows. Ne modifiez les paramètres que si vous savez ce que vous "
                   u"faites, vous ordinateur risque de ne plus fonctionner correctement en "
                   u"cas de mauvaise configuration.\r\n\r\nEtes-vous sûr de vouloir accéder à "
                   u"RegEdit ?",
           .icon = BoxIcon::Exclamation,
           .buttons = BoxButtons::YesNo,
           .defaultAnswer = Answer::Yes}));
}

TEST(MenuBoxes, Contact) {
  EXPECT_EQ(contactBox(), (Box{.title = u"QrCode : Contacter l'auteur par mail",
                               .text = u"Pour me contacter :\r\ntavrollo@example.org\r\n\r\n(merci "
                                       u"d'indiquer dans l'objet du mail : logiciel QrCode)",
                               .icon = BoxIcon::Information,
                               .buttons = BoxButtons::Ok,
                               .defaultAnswer = Answer::Ok}));
}

TEST(MenuBoxes, Update) {
  EXPECT_EQ(updateBox(),
            (Box{.title = u"Tavrollo : Mise à jour",
                 .text = u"Pour vérifier automatiquement si une mise à jour est disponible :\r\n"
                         u"Cliquez sur oui\r\n\r\nPour consulter la page web :\r\nCliquez sur "
                         u"non\r\n\r\nSinon, cliquez sur Annuler",
                 .icon = BoxIcon::Question,
                 .buttons = BoxButtons::YesNoCancel,
                 .defaultAnswer = Answer::Yes}));
}

TEST(MenuBoxes, SystemVersion) {
  EXPECT_EQ(systemVersionBox({u"Debian GNU/Linux", u"12 (bookworm)", u"Linux 6.1.0"}),
            (Box{.title = u"Tavrollo : Version du système",
                 .text = u"Debian GNU/Linux 12 (bookworm)\r\n\r\nNoyau : Linux 6.1.0",
                 .icon = BoxIcon::Information}));
  EXPECT_EQ(systemVersionBox({u"Arch Linux", u"", u"Linux 6.9"}).text,
            u"Arch Linux\r\n\r\nNoyau : Linux 6.9");
}

TEST(Addresses, AreOnAHostThatNobodyOwns) {
  EXPECT_TRUE(addresses::kAuthorMail.ends_with(u"@example.org"));
  EXPECT_TRUE(addresses::kUpdatePage.starts_with(u"https://example.org/"));
  EXPECT_EQ(addresses::kFontPage, u"aide.html");
}
