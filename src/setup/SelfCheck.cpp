// SPDX-License-Identifier: GPL-3.0-or-later
#include "setup/SelfCheck.h"

#include <algorithm>

#include "config/ConfigFile.h"
#include "text/CaseFold.h"
#include "text/Numbers.h"
#include "text/Utf.h"

namespace {

using Facts = SelfCheckFacts;

Finding well(TextView subject, Text detail) {
  return {Verdict::Well, Text(subject), std::move(detail), {}};
}
Finding toMend(TextView subject, Text detail, Text mend) {
  return {Verdict::Mend, Text(subject), std::move(detail), std::move(mend)};
}
Finding unknown(TextView subject) {
  return {Verdict::Unknown, Text(subject), u"ne peut pas être vérifié ici", {}};
}

// The first names; of many, how many more there are.
Text listed(const std::vector<Text>& names) {
  constexpr std::size_t kMost = 5;
  Text text;
  for (std::size_t i = 0; i < std::min(names.size(), kMost); ++i) {
    text += (text.empty() ? u"" : u", ") + names[i];
  }
  if (names.size() <= kMost) return text;
  return text + u" et " + numberText(static_cast<std::int64_t>(names.size() - kMost)) + u" de plus";
}

Finding runningFinding(const Facts& facts) {
  constexpr TextView kSubject = u"Programme";
  if (!facts.runningFolder)
    return toMend(kSubject, u"Tavrollo n'est pas lancé", u"Lancez Tavrollo.");
  if (*facts.runningFolder == facts.programFolder) return well(kSubject, u"lancé");
  return toMend(kSubject, u"lancé avec un autre dossier : " + *facts.runningFolder,
                u"Quittez Tavrollo par son menu et lancez celui-ci.");
}

Finding pagesFinding(const Facts& facts) {
  constexpr TextView kSubject = u"Application web";
  if (!facts.templateFound) {
    return toMend(kSubject, u"le modèle installé est introuvable", u"Réinstallez Tavrollo.");
  }
  if (!facts.folderFilled) {
    return toMend(kSubject, u"le dossier " + facts.programFolder + u" n'est pas encore rempli",
                  u"Lancez Tavrollo : il le remplit.");
  }
  if (facts.missingPages.empty()) return well(kSubject, u"complète dans " + facts.programFolder);
  return toMend(kSubject, u"manque : " + listed(facts.missingPages),
                u"Supprimez fichiers_installes.txt du dossier " + facts.programFolder +
                    u" et relancez Tavrollo : ce qui manque revient, le reste ne change pas.");
}

Finding configFinding(const Facts& facts) {
  constexpr TextView kSubject = u"Réglages";
  const Text path = configPath(facts.programFolder);
  switch (facts.config) {
    case Facts::ConfigState::Read: return well(kSubject, path);
    case Facts::ConfigState::Missing:
      return toMend(kSubject, u"pas encore de config.cfg",
                    u"Lancez Tavrollo et laissez-le chercher la base de cookies.");
    case Facts::ConfigState::Unreadable: break;
  }
  return toMend(
      kSubject, path + u" n'est pas complet",
      u"Ouvrez « Paramètres » dans le menu de Tavrollo, vérifiez-les et cliquez sur « OK ».");
}

// The menu stays locked while no page gets through: there is a way without it.
Text chooseStore(const Facts& facts, const Text& what) {
  return u"Choisissez " + what +
         u" dans « Paramètres », page « Navigateur ». Si le menu « Tavrollo » est grisé, quittez "
         u"Tavrollo, supprimez config.cfg du dossier " +
         facts.programFolder + u" et relancez-le : il cherche de nouveau.";
}

Finding profileFinding(const Facts& facts) {
  constexpr TextView kSubject = u"Profil de Firefox";
  if (facts.settings.browser != 0) {
    return toMend(kSubject, u"les réglages disent Google Chrome, qui chiffre ses cookies",
                  chooseStore(facts, u"Firefox"));
  }
  if (!facts.liveStore) {
    return toMend(kSubject, u"Firefox n'a pas encore de profil",
                  u"Installez Firefox s'il manque, et lancez-le une fois.");
  }
  if (!facts.storeThere) {
    return toMend(kSubject, u"base de cookies introuvable : " + facts.settings.cookiesPath,
                  chooseStore(facts, *facts.liveStore));
  }
  if (*facts.liveStore != facts.settings.cookiesPath) {
    return toMend(kSubject, u"Firefox se sert d'un autre profil que celui qui est surveillé",
                  chooseStore(facts, *facts.liveStore));
  }
  return well(kSubject, facts.settings.cookiesPath + u" (" + facts.storeDetails + u")");
}

Finding storeFinding(const Facts& facts) {
  constexpr TextView kSubject = u"Base de cookies";
  if (!facts.storeThere) {
    return toMend(kSubject, u"introuvable", u"Corrigez d'abord le profil de Firefox.");
  }
  switch (facts.store) {
    case Facts::StoreState::Changing:
      return toMend(kSubject, u"elle change pendant la lecture",
                    u"Recommencez quand Firefox a fini de charger ses pages.");
    case Facts::StoreState::Failed:
      return toMend(kSubject, u"ne peut pas être lue : " + facts.storeFailure,
                    u"Vérifiez que ce fichier est à vous, fermez Firefox et relancez-le.");
    case Facts::StoreState::Read: break;
  }
  if (facts.refusedHosts.empty()) return well(kSubject, u"lisible");
  std::vector<Text> hosts;
  for (const std::string& host : facts.refusedHosts) hosts.push_back(fromUtf8(host));
  return toMend(kSubject, u"des commandes sont refusées, de : " + listed(hosts),
                u"Si ces pages sont les vôtres, écrivez leur hôte dans hotes_autorises.txt et "
                u"relancez Tavrollo ; sinon videz les cookies de cet hôte dans Firefox.");
}

Finding commandFinding(const Facts& facts) {
  constexpr TextView kSubject = u"Dernière commande";
  if (facts.lastCommand) return well(kSubject, u"reçue le " + facts.lastCommand->time);
  return toMend(
      kSubject, u"aucune n'est encore arrivée",
      u"Tavrollo et Firefox lancés, ouvrez la page du professeur et cliquez sur un bouton.");
}

Finding browserFinding(const Facts& facts) {
  constexpr TextView kSubject = u"Navigateur par défaut";
  if (toLower(facts.defaultBrowser).find(u"firefox") != Text::npos)
    return well(kSubject, facts.defaultBrowser);
  return toMend(kSubject, facts.defaultBrowser.empty() ? u"aucun" : facts.defaultBrowser,
                u"Choisissez Firefox comme navigateur dans les réglages du bureau, ou répondez Oui "
                u"quand Tavrollo le demande à son lancement.");
}

Finding trayFinding(const Facts& facts) {
  constexpr TextView kSubject = u"Zone de notification";
  if (!facts.tray) return unknown(kSubject);
  if (*facts.tray) return well(kSubject, u"présente");
  return toMend(
      kSubject, u"le bureau n'en a pas",
      u"Servez-vous de la petite fenêtre du menu, ou ajoutez au bureau une extension pour "
      u"les icônes (sous GNOME : gnome-shell-extension-appindicator).");
}

Finding programFinding(TextView subject, const std::optional<FoundProgram>& found) {
  if (!found) return unknown(subject);
  if (!found->program.empty()) return well(subject, found->program);
  return toMend(subject, u"aucun", u"Installez " + found->missing + u".");
}

Finding fontsFinding(const Facts& facts) {
  constexpr TextView kSubject = u"Polices des codes barres";
  if (!facts.missingFonts) return unknown(kSubject);
  if (facts.missingFonts->empty()) return well(kSubject, u"installées");
  return toMend(kSubject, u"manque : " + listed(*facts.missingFonts),
                u"Réinstallez Tavrollo, ou " + fontsAdvice() + u".");
}

Text namesOf(const std::vector<Finding>& found, Verdict verdict, TextView heading) {
  Text names;
  for (const Finding& finding : found) {
    if (finding.verdict == verdict) names += (names.empty() ? u"" : u", ") + finding.subject;
  }
  return names.empty() ? Text() : Text(heading) + names + u".\r\n";
}

}  // namespace

std::vector<Finding> findings(const SelfCheckFacts& facts) {
  return {runningFinding(facts),
          pagesFinding(facts),
          configFinding(facts),
          profileFinding(facts),
          storeFinding(facts),
          commandFinding(facts),
          browserFinding(facts),
          trayFinding(facts),
          programFinding(u"Éditeur de texte", facts.editor),
          programFinding(u"Traitement de texte", facts.wordProcessor),
          fontsFinding(facts)};
}

Box selfCheckBox(const std::vector<Finding>& found) {
  Text mending;
  for (const Finding& finding : found) {
    if (finding.verdict != Verdict::Mend) continue;
    mending += finding.subject + u" : " + finding.detail + u"\r\n" + finding.mend + u"\r\n\r\n";
  }
  const bool well = mending.empty();
  Text text = (well ? Text(u"Tout va bien.\r\n\r\n") : mending) +
              namesOf(found, Verdict::Well, u"Bien : ") +
              namesOf(found, Verdict::Unknown, u"Ne peut pas être vérifié ici : ");
  while (text.ends_with(u'\n') || text.ends_with(u'\r')) text.pop_back();
  return {.title = u"Tavrollo : vérification de l'installation",
          .text = text,
          .icon = well ? BoxIcon::Information : BoxIcon::Exclamation};
}
