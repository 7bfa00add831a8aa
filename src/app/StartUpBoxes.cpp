// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/StartUpBoxes.h"

Box alreadyRunningBox() {
  return {.title = u"Tavrollo : Lancements multiples",
          .text = u"Tavrollo est déjà lancé.\r\n\r\n"
                  u"Voulez-vous relancer l'application ? (utile si l'icône de la barre de tâches a "
                  u"disparu)",
          .icon = BoxIcon::Question,
          .buttons = BoxButtons::YesNo,
          .defaultAnswer = Answer::Yes};
}

Box firefoxDefaultBox() {
  return {.title = u"Tavrollo : FireFox par défaut",
          .text = u"Ce programme ne fonctionne pour l'instant qu'avec Mozilla Firefox v50 >\r\n"
                  u"Si vous l'avez installé, il est recommandé de le définir comme navigateur par "
                  u"défaut\r\n\r\n"
                  u"Voulez-vous que Firefox soit votre navigateur par défaut ?"
                  u"(Cliquez sur Annuler pour Quitter le programme Tavrollo)",
          .icon = BoxIcon::Exclamation,
          .buttons = BoxButtons::YesNoCancel,
          .defaultAnswer = Answer::Yes};
}

Box quitBox() {
  return {.title = u"Tavrollo",
          .text = u"Voulez-vous vraiment quitter Tavrollo ?\r"
                  u"(Les applications ne seront plus lancées à partir d'un Qr-Code.)\r",
          .icon = BoxIcon::Exclamation,
          .buttons = BoxButtons::YesNo,
          .defaultAnswer = Answer::No};
}

Box noTrayBox() {
  return {.title = u"Tavrollo : zone de notification",
          .text =
              u"Ce bureau n'a pas de zone de notification : l'icône de Tavrollo ne peut pas s'y "
              u"afficher.\r\n\r\n"
              u"Le menu de Tavrollo se trouve dans une petite fenêtre.",
          .icon = BoxIcon::Information};
}
