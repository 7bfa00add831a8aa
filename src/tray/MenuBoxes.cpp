// SPDX-License-Identifier: GPL-3.0-or-later
#include "tray/MenuBoxes.h"

#include "config/Addresses.h"

Box regEditBox() {
  return {.title = u"Tavrolo : Accès à la base de registre système",
          .text = u"Attention !\r\n\r\n"
                  u"Voulez allez entrer dans l'éditeur de registre windows. Ne modifiez les "
                  u"paramètres que si vous savez ce que vous faites, vous ordinateur risque de ne "
                  u"plus fonctionner correctement en cas de mauvaise configuration.\r\n\r\n"
                  u"Etes-vous sûr de vouloir accéder à RegEdit ?",
          .icon = BoxIcon::Exclamation,
          .buttons = BoxButtons::YesNo,
          .defaultAnswer = Answer::Yes};
}

Box contactBox() {
  return {.title = u"QrCode : Contacter l'auteur par mail",
          .text = u"Pour me contacter :\r\n" + Text(addresses::kAuthorMail) +
                  u"\r\n\r\n(merci d'indiquer dans l'objet du mail : logiciel QrCode)",
          .icon = BoxIcon::Information};
}

Box updateBox() {
  return {.title = u"Tavrollo : Mise à jour",
          .text = u"Pour vérifier automatiquement si une mise à jour est disponible :\r\n"
                  u"Cliquez sur oui\r\n\r\n"
                  u"Pour consulter la page web :\r\n"
                  u"Cliquez sur non\r\n\r\n"
                  u"Sinon, cliquez sur Annuler",
          .icon = BoxIcon::Question,
          .buttons = BoxButtons::YesNoCancel,
          .defaultAnswer = Answer::Yes};
}

Box systemVersionBox(const SystemDescription& system) {
  const Text version = system.version.empty() ? Text() : u" " + system.version;
  return {.title = u"Tavrollo : Version du système",
          .text = system.name + version + u"\r\n\r\nNoyau : " + system.kernel,
          .icon = BoxIcon::Information};
}
