// SPDX-License-Identifier: GPL-3.0-or-later
#include "config/ConfigBoxes.h"

namespace {

Box writeFailedBox(TextView fileName) {
  Text text = u"\r\nErreur pendant l'écriture des données dans ";
  text.append(fileName).append(u"\r\nAppuyez de nouveau sur ok pour ressayer");
  return {
      .title = u"Tavrollo : écriture des paramètres", .text = text, .icon = BoxIcon::Exclamation};
}

}  // namespace

Box configUnreadableBox() {
  return {.title = u"Tavrollo : Initialisation du programme",
          .text = u"Initialisation du fichier config.cfg.\n"
                  u"Vous pourrez vérifier les paramètres en cliquant sur le menu paramètres."
                  u"\r\n\r\n"
                  u"Cliquez sur \"Oui\" pour continuer,\r\n"
                  u"Cliquez sur \"Non\" pour quitter Tavrollo (Le programme s'arrêtera)",
          .icon = BoxIcon::Exclamation,
          .buttons = BoxButtons::YesNo,
          .defaultAnswer = Answer::Yes};
}

Box configWriteFailedBox() { return writeFailedBox(u"config.cfg"); }

Box shortcutPathInvalidBox(const Text& defaultPath) {
  return {.title = u"Tavrollo - Initialisation",
          .text = u"Le chemin du fichier shortQrCode.js n'est pas valide.\r\n\r\n"
                  u"Le chemin va être celui par défaut :\r\n" +
                  defaultPath +
                  u"\r\n\r\n"
                  u"Pour enregistrer ce changement, ouvrez le menu Paramètres puis cliquez ok",
          .icon = BoxIcon::Information};
}

Box cookieStoreInaccessibleBox(const Text& cookiesPath) {
  return {.title = u"Tavrollo : Impossible d'accéder au fichier Cookies choisi",
          .text = u"Oups...\r\n"
                  u"impossible d'accéder au fichier Cookies choisi :\r\n\r\n" +
                  cookiesPath +
                  u"\r\n\r\n"
                  u"Soit le chemin n'est pas bon, Soit ce fichier n'existe pas, soit il est "
                  u"inaccessible\r\n\r\n"
                  u"Cliquez Oui pour modifier les paramètres\r\n"
                  u"       Non pour quitter Tavrollo (Le programme s'arrêtera)",
          .icon = BoxIcon::Critical,
          .buttons = BoxButtons::YesNo,
          .defaultAnswer = Answer::Yes};
}

Box shortcutsNotFoundBox(const Text& defaultPath) {
  return {.title = u"Tavrollo - Initialisation - lire les raccourcis",
          .text = u"Le chemin du fichier shortQrCode.js n'est pas valide.\r\n\r\n"
                  u"Chemin par défaut :\r\n" +
                  defaultPath +
                  u"\r\n\r\n"
                  u"Ouvrez le menu Paramètres pour vérifier",
          .icon = BoxIcon::Exclamation};
}

Box createShortcutsBox() {
  return {.title = u"Tavrollo : pas de fichier shortQrCode_.js",
          .text = u"Le fichier shortQrCode.js n'existe pas !\r\n\r\n"
                  u"Voulez que Tavrollo en crée un nouveau ?",
          .icon = BoxIcon::Critical,
          .buttons = BoxButtons::YesNo,
          .defaultAnswer = Answer::Yes};
}

Box shortcutsMissingBox() {
  return {.title = u"Tavrollo : fichier manquant",
          .text = u"Revoyez votre fichier shortQrCode.js\r\n"
                  u"puis redemarrez le programme",
          .icon = BoxIcon::Exclamation};
}

Box shortcutsWriteFailedBox() { return writeFailedBox(u"shortQrCode.js"); }

Box editShortcutsBox() {
  return {.title = u"Tavrollo - Editon de shortQrCode.js",
          .text = u"Attention, ne modifiez ce fichier que si vous savez ce que vous faites !"
                  u"\r\n\r\n"
                  u"Le fichier shortQrCode.js contient les raccourcis QrCodes que vous avez créés,"
                  u"\r\n"
                  u"Une copie de l'orginal va être automatiquement créée, nommée "
                  u"shortQrCode_bak.js",
          .icon = BoxIcon::Exclamation,
          .buttons = BoxButtons::OkCancel};
}
