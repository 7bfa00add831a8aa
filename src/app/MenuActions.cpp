// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/MenuActions.h"

#include "app/WebPage.h"
#include "config/Addresses.h"
#include "text/Paths.h"
#include "tray/Launchers.h"
#include "tray/MenuBoxes.h"
#include "tray/UpdateCheck.h"

std::span<const MenuAction> menuActions() {
  static constexpr MenuAction kActions[] = {
      {u"MenuNotePad", &MenuActions::MenuNotePad_Click},
      {u"MenuWordPad", &MenuActions::MenuWordPad_Click},
      {u"MenuChar", &MenuActions::MenuChar_Click},
      {u"MenuCtrlPanel", &MenuActions::MenuCtrlPanel_Click},
      {u"MenuDos", &MenuActions::MenuDos_Click},
      {u"MenuWinVer", &MenuActions::MenuWinVer_Click},
      {u"MenuRegEdit", &MenuActions::MenuRegEdit_Click},
      {u"MenuExcel", &MenuActions::MenuExcel_Click},
      {u"MenuMSword", &MenuActions::MenuMSword_Click},
      {u"MenuExplorer", &MenuActions::MenuExplorer_Click},
      {u"MenuWebAdmin", &MenuActions::MenuWebAdmin_Click},
      {u"menuWebUser", &MenuActions::menuWebUser_Click},
      {u"menuAide", &MenuActions::menuAide_Click},
      {u"MenuMAJ", &MenuActions::MenuMAJ_Click},
      {u"menuContact", &MenuActions::menuContact_Click},
      {u"MenuEnlev", &MenuActions::MenuEnlev_Click},
  };
  return kActions;
}

void MenuActions::MenuNotePad_Click() { start(u"MenuNotePad_Click", u"notepad"); }
void MenuActions::MenuWordPad_Click() { start(u"MenuWordPad_Click", u"write"); }
void MenuActions::MenuChar_Click() { start(u"MenuChar_Click", u"charmap"); }
void MenuActions::MenuCtrlPanel_Click() { start(u"MenuCtrlPanel_Click", u"control"); }
void MenuActions::MenuDos_Click() { start(u"MenuDos_Click", u"cmd.exe"); }

void MenuActions::MenuWinVer_Click() {
  constexpr TextView kCommand = u"winver";
  const std::optional<SystemDescription> system = to_.describeSystem();
  if (system && to_.shell.commandKind(kCommand) == CommandKind::Box) {
    to_.questions.ask(systemVersionBox(*system));
    return;
  }
  start(u"MenuWinVer_Click", Text(kCommand));
}

void MenuActions::MenuRegEdit_Click() {
  if (to_.questions.ask(regEditBox()) == Answer::Yes) start(u"MenuRegEdit_Click", u"regedit");
}

void MenuActions::MenuExcel_Click() {
  const Text document = templatePath(u"modele_defaut.xls");
  const auto trace = [this](const Text& line) { to_.companion.trace.log(line); };
  if (const auto own = userLauncher(to_.companion.programFolder, launchers::kSpreadsheet, trace)) {
    start(u"MenuExcel_Click", withArgument(*own, document));
    return;
  }
  to_.shell.ShellExecute({.operation = u"open",
                          .file = document,
                          .directory = startInFolder(currentFolder(), nativeSeparator())});
}

void MenuActions::MenuMSword_Click() {
  tell(u"MenuMSword_Click", to_.shell.openInWord(templatePath(u"modele_defaut.doc")));
}

void MenuActions::MenuExplorer_Click() {
  const Text root = webApplicationRoot(to_.companion.settings.shortcutPath);
  start(u"MenuExplorer_Click", u"explorer " + nativePath(root + u"user_datas"));
}

void MenuActions::MenuWebAdmin_Click() { openPage(u"index.html"); }
void MenuActions::menuWebUser_Click() { openPage(u"eleve.html"); }
void MenuActions::menuAide_Click() { openPage(u"aide.html"); }

void MenuActions::MenuMAJ_Click() {
  switch (to_.questions.ask(updateBox())) {
    case Answer::Yes: {
      const Companion& companion = to_.companion;
      tell(u"CheckForUpdate", CheckForUpdate(true, to_.now(),
                                             {companion.programFolder, to_.executablePath,
                                              to_.revision, companion.locale, to_.shell}));
      return;
    }
    case Answer::No:
      to_.shell.ShellExecute({.operation = u"open", .file = Text(addresses::kUpdatePage)});
      return;
    default: return;
  }
}

void MenuActions::menuContact_Click() { to_.questions.ask(contactBox()); }

void MenuActions::showCookieInformation() {
  start(u"cmdInfos_Click",
        u"notepad " + to_.companion.programFolder + nativePath(u"\\infos_qrCode_cookies.txt"));
}

void MenuActions::start(TextView procedure, const Text& commandLine) {
  tell(procedure, to_.shell.startCommandLine(commandLine));
}

void MenuActions::tell(TextView procedure, const Failure& failure) {
  if (failure) to_.questions.ask(errorBox(procedure, failure.description));
}

void MenuActions::openPage(TextView name) {
  to_.shell.ShellExecute(webPageRequest(to_.companion.settings, name));
}

Text MenuActions::templatePath(TextView name) const {
  return to_.companion.programFolder + nativePath(u"\\modeles_word_excel\\") + Text(name);
}
