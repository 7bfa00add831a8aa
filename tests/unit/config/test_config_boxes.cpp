// SPDX-License-Identifier: GPL-3.0-or-later
#include "config/ConfigBoxes.h"

#include <gtest/gtest.h>

#include "config/FirefoxProbe.h"
#include "support/Doubles.h"

namespace {

constexpr BoxIcon kNone = BoxIcon::None;
constexpr BoxIcon kCritical = BoxIcon::Critical;
constexpr BoxIcon kExclamation = BoxIcon::Exclamation;
constexpr BoxIcon kInformation = BoxIcon::Information;

struct Row {
  Box box;
  Text title;
  Text text;
  BoxIcon icon;
  BoxButtons buttons;
  Answer defaultAnswer;
};

const Row kRows[] = {
    {configUnreadableBox(), u"Tavrollo : Initialisation du programme",
     u"Initialisation du fichier config.cfg.\nVous pourrez vérifier les paramètres en cliquant sur le menu paramètres.\r\n\r\nCliquez sur \"Oui\" pour continuer,\r\nCliquez sur \"Non\" pour quitter Tavrollo (Le programme s'arrêtera)",
     kExclamation, BoxButtons::YesNo, Answer::Yes},
    {configWriteFailedBox(), u"Tavrollo : écriture des paramètres",
     u"\r\nErreur pendant l'écriture des données dans config.cfg\r\nAppuyez de nouveau sur ok pour ressayer",
     kExclamation, BoxButtons::Ok, Answer::Ok},
    {shortcutPathInvalidBox(u"/p/shortQrCode.js"), u"Tavrollo - Initialisation",
     u"Le chemin du fichier shortQrCode.js n'est pas valide.\r\n\r\nLe chemin va être celui par défaut :\r\n/p/shortQrCode.js\r\n\r\nPour enregistrer ce changement, ouvrez le menu Paramètres puis cliquez ok",
     kInformation, BoxButtons::Ok, Answer::Ok},
    {cookieStoreInaccessibleBox(u"/p/cookies.sqlite"),
     u"Tavrollo : Impossible d'accéder au fichier Cookies choisi",
     u"Oups...\r\nimpossible d'accéder au fichier Cookies choisi :\r\n\r\n/p/cookies.sqlite\r\n\r\nSoit le chemin n'est pas bon, Soit ce fichier n'existe pas, soit il est inaccessible\r\n\r\nCliquez Oui pour modifier les paramètres\r\n       Non pour quitter Tavrollo (Le programme s'arrêtera)",
     kCritical, BoxButtons::YesNo, Answer::Yes},
    {shortcutsNotFoundBox(u"/p/shortQrCode.js"), u"Tavrollo - Initialisation - lire les raccourcis",
     u"Le chemin du fichier shortQrCode.js n'est pas valide.\r\n\r\nChemin par défaut :\r\n/p/shortQrCode.js\r\n\r\nOuvrez le menu Paramètres pour vérifier",
     kExclamation, BoxButtons::Ok, Answer::Ok},
    {createShortcutsBox(), u"Tavrollo : pas de fichier shortQrCode_.js",
     u"Le fichier shortQrCode.js n'existe pas !\r\n\r\nVoulez que Tavrollo en crée un nouveau ?",
     kCritical, BoxButtons::YesNo, Answer::Yes},
    {shortcutsMissingBox(), u"Tavrollo : fichier manquant",
     u"Revoyez votre fichier shortQrCode.js\r\npuis redemarrez le programme", kExclamation,
     BoxButtons::Ok, Answer::Ok},
    {shortcutsWriteFailedBox(), u"Tavrollo : écriture des paramètres",
     u"\r\nErreur pendant l'écriture des données dans shortQrCode.js\r\nAppuyez de nouveau sur ok pour ressayer",
     kExclamation, BoxButtons::Ok, Answer::Ok},
    {editShortcutsBox(), u"Tavrollo - Editon de shortQrCode.js",
     u"Attention, ne modifiez ce fichier que si vous savez ce que vous faites !\r\n\r\nLe fichier shortQrCode.js contient les raccourcis QrCodes que vous avez créés,\r\nUne copie de l'orginal va être automatiquement créée, nommée shortQrCode_bak.js",
     kExclamation, BoxButtons::OkCancel, Answer::Ok},
    {firefoxProbeBox(true), u"Tavrollo", u"Existe !", kNone, BoxButtons::Ok, Answer::Ok},
    {firefoxProbeBox(false), u"Tavrollo", u"N'existe pas", kNone, BoxButtons::Ok, Answer::Ok},
};

}  // namespace

TEST(ConfigBoxes, AreExactToTheCharacter) {
  for (const Row& row : kRows) {
    EXPECT_EQ(row.box.title, row.title);
    EXPECT_EQ(row.box.text, row.text);
    EXPECT_EQ(row.box.icon, row.icon);
    EXPECT_EQ(row.box.buttons, row.buttons);
    EXPECT_EQ(row.box.defaultAnswer, row.defaultAnswer);
  }
}

TEST(FirefoxProbe, AsksForTheApplicationAndShowsWhetherItExists) {
  for (const bool installed : {true, false}) {
    Journal journal;
    FakeBrowser browser(journal);
    ScriptedQuestions questions(journal);
    questions.answers = {Answer::Ok};
    if (installed) browser.values[Text(kFirefoxApplication)] = u"firefox.desktop";
    probeFirefox(browser, questions);
    EXPECT_EQ(journal.at(0), "read HKEY_CLASSES_ROOT\\Applications\\firefox.exe\\\\");
    EXPECT_EQ(questions.boxes, std::vector<Box>{firefoxProbeBox(installed)});
  }
}
