// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <algorithm>

#include "setup/SelfCheck.h"
#include "text/Paths.h"

namespace {

using Facts = SelfCheckFacts;

Facts allWell() {
  Facts facts;
  facts.programFolder = u"/h/Tavrollo";
  facts.runningFolder = u"/h/Tavrollo";
  facts.templateFound = true;
  facts.folderFilled = true;
  facts.config = Facts::ConfigState::Read;
  facts.settings.cookiesPath = u"/p/cookies.sqlite";
  facts.storeThere = true;
  facts.storeDetails = u"96 Ko, dernière écriture le 21/11/2026 à 10:00:00";
  facts.liveStore = u"/p/cookies.sqlite";
  facts.store = Facts::StoreState::Read;
  facts.lastCommand = Facts::LastCommand{.time = u"21/11/2026 09:59:00", .field = u"17"};
  facts.defaultBrowser = u"firefox-esr.desktop";
  facts.tray = true;
  facts.editor = FoundProgram{.program = u"/usr/bin/gedit", .missing = {}};
  facts.wordProcessor = FoundProgram{.program = u"lowriter", .missing = {}};
  facts.missingFonts = std::vector<Text>();
  return facts;
}

Finding about(const Facts& facts, TextView subject) {
  for (const Finding& finding : findings(facts)) {
    if (finding.subject == subject) return finding;
  }
  ADD_FAILURE() << "no such subject";
  return {};
}

TEST(SelfCheck, TellsEachPointOnceInItsOrder) {
  std::vector<Text> subjects;
  for (const Finding& finding : findings(allWell())) subjects.push_back(finding.subject);
  EXPECT_EQ(subjects,
            (std::vector<Text>{u"Programme", u"Application web", u"Réglages", u"Profil de Firefox",
                               u"Base de cookies", u"Dernière commande", u"Navigateur par défaut",
                               u"Zone de notification", u"Éditeur de texte", u"Traitement de texte",
                               u"Polices des codes barres"}));
}

TEST(SelfCheck, WhereAllIsWellNothingIsToBeMended) {
  for (const Finding& finding : findings(allWell())) {
    EXPECT_EQ(finding.verdict, Verdict::Well);
    EXPECT_EQ(finding.mend, u"");
    EXPECT_NE(finding.detail, u"");
  }
  EXPECT_EQ(about(allWell(), u"Profil de Firefox").detail,
            u"/p/cookies.sqlite (96 Ko, dernière écriture le 21/11/2026 à 10:00:00)");
  EXPECT_EQ(about(allWell(), u"Dernière commande").detail, u"reçue le 21/11/2026 09:59:00");
}

// What each fault says, what mends it, and how many points of the diagnosis it touches.
const struct {
  void (*breakIt)(Facts&);
  TextView subject;
  TextView detail;
  TextView mendBegins;
  int touched = 1;
} kFaults[] = {
    {[](Facts& f) { f.runningFolder.reset(); }, u"Programme", u"Tavrollo n'est pas lancé",
     u"Lancez Tavrollo."},
    {[](Facts& f) { f.runningFolder = u"/other"; }, u"Programme",
     u"lancé avec un autre dossier : /other", u"Quittez Tavrollo"},
    {[](Facts& f) { f.templateFound = false; }, u"Application web",
     u"le modèle installé est introuvable", u"Réinstallez Tavrollo."},
    {[](Facts& f) {
       f.missingPages = {u"nav/a.html", u"nav/b.js"};
     },
     u"Application web", u"manque : nav/a.html, nav/b.js",
     u"Supprimez fichiers_installes.txt du dossier /h/Tavrollo"},
    {[](Facts& f) { f.missingPages = {u"1", u"2", u"3", u"4", u"5", u"6", u"7"}; },
     u"Application web", u"manque : 1, 2, 3, 4, 5 et 2 de plus", u"Supprimez"},
    {[](Facts& f) { f.folderFilled = false; }, u"Application web",
     u"le dossier /h/Tavrollo n'est pas encore rempli", u"Lancez Tavrollo"},
    {[](Facts& f) { f.config = Facts::ConfigState::Missing; }, u"Réglages",
     u"pas encore de config.cfg", u"Lancez Tavrollo et laissez-le chercher"},
    {[](Facts& f) { f.config = Facts::ConfigState::Unreadable; }, u"Réglages",
     u"/h/Tavrollo/config.cfg n'est pas complet", u"Ouvrez « Paramètres »"},
    {[](Facts& f) { f.settings.browser = 1; }, u"Profil de Firefox",
     u"les réglages disent Google Chrome, qui chiffre ses cookies", u"Choisissez Firefox"},
    {[](Facts& f) { f.liveStore.reset(); }, u"Profil de Firefox",
     u"Firefox n'a pas encore de profil", u"Installez Firefox"},
    {[](Facts& f) { f.liveStore = u"/q/cookies.sqlite"; }, u"Profil de Firefox",
     u"Firefox se sert d'un autre profil que celui qui est surveillé",
     u"Choisissez /q/cookies.sqlite dans"},
    {[](Facts& f) { f.storeThere = false; }, u"Profil de Firefox",
     u"base de cookies introuvable : /p/cookies.sqlite", u"Choisissez /p/cookies.sqlite dans", 2},
    {[](Facts& f) { f.storeThere = false; }, u"Base de cookies", u"introuvable",
     u"Corrigez d'abord", 2},
    {[](Facts& f) { f.store = Facts::StoreState::Changing; }, u"Base de cookies",
     u"elle change pendant la lecture", u"Recommencez"},
    {[](Facts& f) {
       f.store = Facts::StoreState::Failed;
       f.storeFailure = u"Accès refusé";
     },
     u"Base de cookies", u"ne peut pas être lue : Accès refusé", u"Vérifiez que ce fichier"},
    {[](Facts& f) {
       f.refusedHosts = {"a.example", "b.example"};
     },
     u"Base de cookies", u"des commandes sont refusées, de : a.example, b.example",
     u"Si ces pages sont les vôtres"},
    {[](Facts& f) { f.lastCommand.reset(); }, u"Dernière commande", u"aucune n'est encore arrivée",
     u"Tavrollo et Firefox lancés, ouvrez"},
    {[](Facts& f) { f.defaultBrowser = u""; }, u"Navigateur par défaut", u"aucun",
     u"Choisissez Firefox comme navigateur"},
    {[](Facts& f) { f.defaultBrowser = u"chromium.desktop"; }, u"Navigateur par défaut",
     u"chromium.desktop", u"Choisissez Firefox comme navigateur"},
    {[](Facts& f) { f.tray = false; }, u"Zone de notification", u"le bureau n'en a pas",
     u"Servez-vous de la petite fenêtre"},
    {[](Facts& f) { f.editor = FoundProgram{.program = {}, .missing = u"gedit (paquet gedit)"}; },
     u"Éditeur de texte", u"aucun", u"Installez gedit (paquet gedit)."},
    {[](Facts& f) {
       f.wordProcessor = FoundProgram{.program = {}, .missing = u"lowriter (paquet l)"};
     },
     u"Traitement de texte", u"aucun", u"Installez lowriter (paquet l)."},
    {[](Facts& f) { f.missingFonts = {u"Code 128"}; }, u"Polices des codes barres",
     u"manque : Code 128", u"Réinstallez Tavrollo, ou "},
};

// The menu stays locked as long as no page gets through.
TEST(SelfCheck, AWrongStoreCanBeMendedWithoutTheMenu) {
  for (void (*breakIt)(Facts&) : {+[](Facts& f) { f.settings.browser = 1; },
                                  +[](Facts& f) { f.liveStore = u"/q/cookies.sqlite"; },
                                  +[](Facts& f) { f.storeThere = false; }}) {
    Facts facts = allWell();
    breakIt(facts);
    EXPECT_NE(about(facts, u"Profil de Firefox").mend.find(u"supprimez config.cfg du dossier /h"),
              Text::npos);
  }
}

TEST(SelfCheck, EachFaultIsToldWithTheSentenceThatMendsIt) {
  for (const auto& fault : kFaults) {
    Facts facts = allWell();
    fault.breakIt(facts);
    const Finding finding = about(facts, fault.subject);
    EXPECT_EQ(finding.verdict, Verdict::Mend);
    EXPECT_EQ(withSeparator(finding.detail, u'/'), fault.detail);
    EXPECT_TRUE(finding.mend.starts_with(fault.mendBegins));
    EXPECT_TRUE(finding.mend.ends_with(u".")) << "a sentence";
    const std::vector<Finding> all = findings(facts);
    EXPECT_EQ(std::count_if(all.begin(), all.end(),
                            [](const Finding& each) { return each.verdict != Verdict::Well; }),
              fault.touched);
  }
}

TEST(SelfCheck, WhatCannotBeToldIsNoFault) {
  Facts facts = allWell();
  facts.tray.reset();
  facts.editor.reset();
  facts.wordProcessor.reset();
  facts.missingFonts.reset();
  int unknown = 0;
  for (const Finding& finding : findings(facts)) {
    EXPECT_NE(finding.verdict, Verdict::Mend);
    if (finding.verdict == Verdict::Unknown) ++unknown;
  }
  EXPECT_EQ(unknown, 4);
}

TEST(SelfCheck, FirefoxIsKnownInAnyCase) {
  Facts facts = allWell();
  facts.defaultBrowser = u"org.mozilla.Firefox.desktop";
  EXPECT_EQ(about(facts, u"Navigateur par défaut").verdict, Verdict::Well);
}

TEST(SelfCheckBox, NamesWhatIsWell) {
  Facts facts = allWell();
  facts.tray.reset();
  const Box box = selfCheckBox(findings(facts));
  EXPECT_EQ(box.title, u"Tavrollo : vérification de l'installation");
  EXPECT_EQ(box.text,
            u"Tout va bien.\r\n\r\nBien : Programme, Application web, Réglages, Profil de "
            u"Firefox, Base de cookies, Dernière commande, Navigateur par défaut, Éditeur "
            u"de texte, Traitement de texte, Polices des codes barres.\r\nNe peut pas être "
            u"vérifié ici : Zone de notification.");
  EXPECT_EQ(box.icon, BoxIcon::Information);
  EXPECT_EQ(box.buttons, BoxButtons::Ok);
}

TEST(SelfCheckBox, TellsWhatIsToBeMendedInFull) {
  const Box box = selfCheckBox({{Verdict::Mend, u"A", u"a", u"Faites a."},
                                {Verdict::Well, u"B", u"b", u""},
                                {Verdict::Mend, u"C", u"c", u"Faites c."}});
  EXPECT_EQ(box.text, u"A : a\r\nFaites a.\r\n\r\nC : c\r\nFaites c.\r\n\r\nBien : B.");
  EXPECT_EQ(box.icon, BoxIcon::Exclamation);
  EXPECT_EQ(selfCheckBox({{Verdict::Mend, u"A", u"a", u"Faites a."}}).text, u"A : a\r\nFaites a.");
}

TEST(LastCommandIn, ReadsWhatThePagesAreTold) {
  const auto last =
      lastCommandIn("var tavrolloEtat={\"compteur\":3,\"dernier\":\"1732\",\"intervalle\":1000,"
                    "\"version\":\"1.0.0\",\"heure\":\"21/11/2026 10:00:00\"};\r\n");
  ASSERT_TRUE(last);
  EXPECT_EQ(last->time, u"21/11/2026 10:00:00");
  EXPECT_EQ(last->field, u"1732");
}

TEST(LastCommandIn, WhatIsNoSuchScriptHoldsNone) {
  for (const char* script :
       {"", "var tavrolloEtat={};", "\"dernier\":\"1\"", "\"dernier\":\"1\",\"heure\":\"21/11",
        "\"dernier\":\"1\",\"heure\":\"\""}) {
    EXPECT_FALSE(lastCommandIn(script)) << script;
  }
}

}  // namespace
