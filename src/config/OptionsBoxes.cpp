// SPDX-License-Identifier: GPL-3.0-or-later
#include "config/OptionsBoxes.h"

Box cookieStoreRejectedBox() {
  return {.title = u"Tavrollo : Impossible d'accéder au fichier Cookies choisi",
          .text = u"Oups...\r\n"
                  u"impossible d'accéder au fichier Cookies.\r\n"
                  u"Soit le chemin n'est pas bon, soit ce fichier n'existe pas, soit il est "
                  u"inaccessible.\r\n\r\n"
                  u"Cliquez sur \"Oui\" pour modifier les paramètres\r\n"
                  u"Cliquez sur \"Non\" pour quitter Tavrollo (Le programme s'arrêtera)",
          .icon = BoxIcon::Exclamation,
          .buttons = BoxButtons::YesNo,
          .defaultAnswer = Answer::Yes};
}

Box firstRowStaysBox() {
  return {.title = u"qrCode - Supprimer des raccourcis QrCode",
          .text = u"La première ligne ne peut pas être supprimée.",
          .icon = BoxIcon::Information};
}

Box autostartBox(const Failure& failure) {
  return {.title = u"Tavrollo : lancement automatique",
          .text = u"Impossible de changer le lancement à l'ouverture de la session :\r\n" +
                  failure.description,
          .icon = BoxIcon::Exclamation};
}
