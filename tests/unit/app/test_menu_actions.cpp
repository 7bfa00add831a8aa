// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/MenuActions.h"

#include <gtest/gtest.h>

#include "config/Addresses.h"
#include "support/Doubles.h"
#include "support/Scratch.h"
#include "text/Paths.h"
#include "tray/MenuBoxes.h"
#include "tray/MenuTree.h"
#include "tray/UpdateCheck.h"

namespace {

constexpr std::time_t kNow = 1'700'000'000;
const SystemDescription kSystem{u"Debian GNU/Linux", u"12 (bookworm)", u"Linux 6.1.0"};

class MenuActionsTest : public ::testing::Test {
 protected:
  MenuActionsTest() {
    companion.programFolder = folder.text();
    companion.locale = frenchLocale();
    companion.settings.shortcutPath = folder.text("nav/res_css/js/shortQrCode.js");
  }

  void choose(TextView entry) {
    for (const MenuAction& action : menuActions()) {
      if (action.entry == entry) return (actions.*action.run)();
    }
    FAIL() << "no action for " << toUtf8(entry);
  }

  Scratch folder;
  Companion companion;
  Journal journal;
  RecordingShell shell{journal};
  ScriptedQuestions questions{journal};
  std::optional<SystemDescription> system = kSystem;
  MenuActions actions{{.companion = companion,
                       .shell = shell,
                       .questions = questions,
                       .executablePath = folder.text("bin/tavrollo"),
                       .revision = 67,
                       .now = [] { return kNow; },
                       .describeSystem = [this] { return system; }}};
};

}  // namespace

TEST_F(MenuActionsTest, EveryActionStandsInTheMenu) {
  for (const MenuAction& action : menuActions()) {
    ASSERT_TRUE(menuEntry(action.entry)) << toUtf8(action.entry);
    EXPECT_EQ(menuEntry(action.entry)->kind, MenuEntryKind::Command);
  }
}

TEST_F(MenuActionsTest, TheToolsAreStartedByTheirCommandLines) {
  struct Row {
    TextView entry;
    std::string commandLine;
  };
  const Row rows[] = {
      {u"MenuNotePad", "notepad"}, {u"MenuWordPad", "write"},
      {u"MenuChar", "charmap"},    {u"MenuCtrlPanel", "control"},
      {u"MenuDos", "cmd.exe"},     {u"MenuExplorer", "explorer " + folder.path("nav/user_datas")},
  };
  for (const Row& row : rows) {
    journal.clear();
    choose(row.entry);
    EXPECT_EQ(journal, Journal({"start " + row.commandLine}));
  }
}

TEST_F(MenuActionsTest, WhatCannotBeStartedIsTold) {
  shell.failure = {53, u"Fichier introuvable : gucharmap (paquet gucharmap)"};
  for (const TextView entry : {u"MenuNotePad", u"MenuWordPad", u"MenuChar", u"MenuCtrlPanel",
                               u"MenuDos", u"MenuExplorer", u"MenuWinVer", u"MenuMSword"}) {
    questions.answers = {Answer::Ok};
    choose(entry);
    EXPECT_EQ(questions.boxes.back(), errorBox(Text(entry) + u"_Click", shell.failure.description));
  }
  questions.answers = {Answer::Yes, Answer::Ok};
  choose(u"MenuRegEdit");
  EXPECT_EQ(questions.boxes.back(), errorBox(u"MenuRegEdit_Click", shell.failure.description));

  folder.write("lanceurs.cfg", "excel=gnumeric\n");
  questions.answers = {Answer::Ok};
  choose(u"MenuExcel");
  EXPECT_EQ(questions.boxes.back(), errorBox(u"MenuExcel_Click", shell.failure.description));
}

TEST_F(MenuActionsTest, TheRegistryEditorIsStartedOnYesAlone) {
  questions.answers = {Answer::No, Answer::Cancel, Answer::Yes};
  choose(u"MenuRegEdit");
  EXPECT_EQ(questions.boxes, std::vector<Box>{regEditBox()});
  EXPECT_EQ(journal.size(), 1u);
  choose(u"MenuRegEdit");
  EXPECT_EQ(journal.size(), 2u);
  choose(u"MenuRegEdit");
  EXPECT_EQ(journal.back(), "start regedit");
}

TEST_F(MenuActionsTest, TheSystemsVersionIsABoxWhereNoProgramShowsIt) {
  choose(u"MenuWinVer");
  EXPECT_EQ(journal, Journal({"start winver"}));

  journal.clear();
  shell.kinds[u"winver"] = CommandKind::Box;
  questions.answers = {Answer::Ok};
  choose(u"MenuWinVer");
  EXPECT_EQ(questions.boxes, std::vector<Box>{systemVersionBox(kSystem)});
  EXPECT_EQ(journal.size(), 1u);

  system.reset();
  choose(u"MenuWinVer");
  EXPECT_EQ(journal.back(), "start winver");
}

TEST_F(MenuActionsTest, TheSpreadsheetIsOpenedByTheShell) {
  choose(u"MenuExcel");
  ASSERT_EQ(shell.requests.size(), 1u);
  const ShellRequest& request = shell.requests[0];
  EXPECT_EQ(request.operation, u"open");
  EXPECT_EQ(request.file, folder.text("modeles_word_excel/modele_defaut.xls"));
  EXPECT_EQ(request.parameters, u"");
  EXPECT_EQ(request.show, ShowState::Normal);
  EXPECT_EQ(request.directory, startInFolder(currentFolder(), nativeSeparator()));

  folder.write("lanceurs.cfg", "excel=gnumeric\n");
  choose(u"MenuExcel");
  EXPECT_EQ(journal.back(), "start gnumeric " + toUtf8(parameterWord(request.file)));
  EXPECT_EQ(companion.trace.text(), u"");
}

TEST_F(MenuActionsTest, LaunchersThatCannotBeReadAreTracedAndTheShellOpensTheSpreadsheet) {
  folder.makeFolders("lanceurs.cfg");
  choose(u"MenuExcel");
  EXPECT_EQ(journal, Journal({"execute " + folder.path("modeles_word_excel/modele_defaut.xls")}));
  EXPECT_NE(companion.trace.text().find(folder.text("lanceurs.cfg")), Text::npos);
}

TEST_F(MenuActionsTest, WhatTheShellCannotOpenShowsNoBox) {
  shell.failure = {53, u"Fichier introuvable"};
  for (const TextView entry : {u"MenuExcel", u"MenuWebAdmin", u"menuWebUser", u"menuAide"}) {
    choose(entry);
  }
  EXPECT_EQ(shell.requests.size(), 4u);
  EXPECT_TRUE(questions.boxes.empty());
}

TEST_F(MenuActionsTest, TheLetterIsOpenedInTheWordProcessor) {
  choose(u"MenuMSword");
  EXPECT_EQ(journal, Journal({"word " + folder.path("modeles_word_excel/modele_defaut.doc")}));
}

TEST_F(MenuActionsTest, ThePagesAreOpened) {
  for (const TextView entry : {u"MenuWebAdmin", u"menuWebUser", u"menuAide"}) choose(entry);
  EXPECT_EQ(journal, Journal({"execute " + folder.path("nav/index.html"),
                              "execute " + folder.path("nav/eleve.html"),
                              "execute " + folder.path("nav/aide.html")}));
  EXPECT_EQ(shell.requests[0].operation, u"open");
}

TEST_F(MenuActionsTest, TheUpdateIsLookedForOnYesShownOnNoAndLeftOnCancel) {
  questions.answers = {Answer::Cancel, Answer::No, Answer::Yes};
  choose(u"MenuMAJ");
  EXPECT_EQ(questions.boxes, std::vector<Box>{updateBox()});
  EXPECT_TRUE(shell.requests.empty());

  choose(u"MenuMAJ");
  ASSERT_EQ(shell.requests.size(), 1u);
  EXPECT_EQ(shell.requests[0].operation, u"open");
  EXPECT_EQ(shell.requests[0].file, addresses::kUpdatePage);
  EXPECT_EQ(shell.requests[0].show, ShowState::Normal);
  EXPECT_FALSE(std::filesystem::exists(folder.path("LastDateCheckUpdate.txt")));

  choose(u"MenuMAJ");
  ASSERT_EQ(shell.requests.size(), 2u);
  EXPECT_EQ(shell.requests[1].file, folder.text("bin/updater"));
  EXPECT_EQ(shell.requests[1].parameters, u"setup_Tavrollo\t67\tTavrollo\ttavrollo");
  EXPECT_EQ(folder.read("LastDateCheckUpdate.txt"), lastCheckBytes(kNow));
}

TEST_F(MenuActionsTest, ACheckThatCannotBeNotedIsTold) {
  folder.makeFolders("LastDateCheckUpdate.txt/x");
  questions.answers = {Answer::Yes, Answer::Ok};
  choose(u"MenuMAJ");
  EXPECT_EQ(questions.boxes.back().text.rfind(u"Erreur dans CheckForUpdate\r\n", 0), 0u);
  EXPECT_TRUE(shell.requests.empty());
}

TEST_F(MenuActionsTest, TheAuthorIsNamed) {
  questions.answers = {Answer::Ok};
  choose(u"menuContact");
  EXPECT_EQ(questions.boxes, std::vector<Box>{contactBox()});
}

TEST_F(MenuActionsTest, TheEntryWithoutEffectDoesNothing) {
  choose(u"MenuEnlev");
  EXPECT_TRUE(journal.empty());
}

TEST_F(MenuActionsTest, TheFileAboutTheCookiesIsShownInTheEditor) {
  actions.showCookieInformation();
  EXPECT_EQ(journal, Journal({"start notepad " + folder.path("infos_qrCode_cookies.txt")}));
  shell.failure = {53, u"Fichier introuvable"};
  questions.answers = {Answer::Ok};
  actions.showCookieInformation();
  EXPECT_EQ(questions.boxes.back(), errorBox(u"cmdInfos_Click", u"Fichier introuvable"));
}
