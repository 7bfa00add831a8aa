// SPDX-License-Identifier: GPL-3.0-or-later
#include "tray/Launchers.h"

#include <gtest/gtest.h>

#include "support/Doubles.h"
#include "support/Processes.h"
#include "support/Scratch.h"

namespace {

class LauncherShellTest : public ::testing::Test {
 protected:
  void entries(std::string_view bytes) { folder.write("lanceurs.cfg", bytes); }

  Scratch folder;
  Text programFolder = folder.text();
  Journal journal;
  RecordingShell inner{journal};
  std::vector<Text> traces;
  LauncherTrace trace = [this](const Text& line) { traces.push_back(line); };
  LauncherShell shell{programFolder, inner, trace};
};

}  // namespace

TEST(Launchers, TheFileIsReadLineByLine) {
  using Entries = std::map<Text, Text>;
  struct Row {
    std::string_view bytes;
    Entries entries;
  };
  const Row rows[] = {
      {"", {}},
      {"write=abiword\r\ncharmap=x y\n", {{u"write", u"abiword"}, {u"charmap", u"x y"}}},
      {" Write = abiword --new \t\n", {{u"write", u"abiword --new"}}},
      {"cmd.exe=xterm\n", {{u"cmd", u"xterm"}}},
      {"CMD=xterm -e a=b", {{u"cmd", u"xterm -e a=b"}}},
      {"# write=a\n;write=b\nwrite\n\n", {}},
      {"write=a\nwrite=b\n", {{u"write", u"b"}}},
      {"write=a\nwrite=\n", {}},
      {"\xEF\xBB\xBFwrite=caf\xC3\xA9\n", {{u"write", u"café"}}},
      {"write=caf\xE9\n", {{u"write", u"café"}}},
  };
  for (const Row& row : rows) EXPECT_EQ(parseLaunchers(row.bytes), row.entries) << row.bytes;
}

TEST_F(LauncherShellTest, WithoutAFileEveryCommandLineIsTheShellsOwn) {
  EXPECT_EQ(userLauncher(programFolder, u"notepad", trace), std::nullopt);
  EXPECT_FALSE(shell.startCommandLine(u"notepad /a b"));
  EXPECT_FALSE(shell.startCommandLine(u"cmd.exe"));
  EXPECT_FALSE(shell.openInWord(u"/m.doc"));
  shell.ShellExecute({.file = u"/c"});
  EXPECT_EQ(journal, Journal({"start notepad /a b", "start cmd.exe", "word /m.doc", "execute /c"}));
  EXPECT_TRUE(traces.empty());
}

TEST_F(LauncherShellTest, AFileThatCannotBeReadIsTracedAndTheCommandLinesAreTheShellsOwn) {
  folder.makeFolders("lanceurs.cfg");
  EXPECT_FALSE(shell.startCommandLine(u"notepad /a b"));
  EXPECT_FALSE(shell.openInWord(u"/m.doc"));
  EXPECT_EQ(journal, Journal({"start notepad /a b", "word /m.doc"}));
  const Text line = u"Erreur d'accès Chemin/Fichier : " + folder.text("lanceurs.cfg");
  EXPECT_EQ(traces, (std::vector<Text>{line, line}));
}

#ifndef TAVROLLO_WITHOUT_POSIX  // it closes a file
TEST_F(LauncherShellTest, AFileThatMayNotBeReadIsTracedWithThatReason) {
  entries("notepad=gedit\n");
  std::filesystem::permissions(folder.path("lanceurs.cfg"), std::filesystem::perms::none);
  std::filesystem::permissions(folder.path(), static_cast<std::filesystem::perms>(0755));
  const int outcome = inChildWithoutRights([this] {
    shell.startCommandLine(u"notepad");
    const std::vector<Text> denied{u"Permission refusée : " + folder.text("lanceurs.cfg")};
    return traces == denied && journal == Journal({"start notepad"}) ? 0 : 1;
  });
  EXPECT_EQ(outcome, 0);
}
#endif

TEST_F(LauncherShellTest, TheUsersEntryTakesThePlaceOfItsCommandAlone) {
  entries("notepad=gedit --wait\ncmd=xterm -bg black\nword=abiword\n");
  shell.startCommandLine(u"notepad");
  shell.startCommandLine(u"notepad /a b/c'd");
  shell.startCommandLine(u"cmd.exe");
  shell.startCommandLine(u"charmap");
  shell.openInWord(u"/m n.doc");
  EXPECT_EQ(journal, Journal({"start gedit --wait",
                              "start gedit --wait " + toUtf8(parameterWord(u"/a b/c'd")),
                              "start xterm -bg black", "start charmap",
                              "start abiword " + toUtf8(parameterWord(u"/m n.doc"))}));
}

TEST_F(LauncherShellTest, AFileIsNoOptionForTheUsersEntry) {
  entries("notepad=gedit\n");
  shell.startCommandLine(u"notepad -rf");
  EXPECT_EQ(journal, Journal({"start gedit " + toUtf8(fileWord(u"-rf"))}));
#ifndef TAVROLLO_WITHOUT_POSIX  // there options begin with a slash
  EXPECT_EQ(fileWord(u"-rf"), u"./-rf");
#endif
}

TEST_F(LauncherShellTest, AnEntryOfACommandThatTakesNoPathIsGivenItsWords) {
  entries("cmd=xterm -hold\ncharmap=mine\n");
  shell.startCommandLine(u"cmd.exe -e 'a b' c");
  shell.startCommandLine(u"charmap ");
  EXPECT_EQ(journal, Journal({"start xterm -hold -e 'a b' c", "start mine"}));
}

TEST_F(LauncherShellTest, TheUsersEntryIsStartedWhereElseABoxWouldBeShown) {
  inner.kinds = {{u"winver", CommandKind::Box}};
  EXPECT_EQ(shell.commandKind(u"winver"), CommandKind::Box);
  EXPECT_EQ(shell.commandKind(u"explorer"), CommandKind::OnePath);
  EXPECT_EQ(shell.commandKind(u"charmap"), CommandKind::Words);

  entries("winver=hostnamectl\nexplorer=thunar\n");
  EXPECT_EQ(shell.commandKind(u"winver"), CommandKind::Words);
  EXPECT_EQ(shell.commandKind(u"explorer"), CommandKind::OnePath);
  shell.startCommandLine(u"winver");
  EXPECT_EQ(journal, Journal({"start hostnamectl"}));
}

TEST_F(LauncherShellTest, AChangeHoldsAtOnce) {
  entries("write=a\n");
  shell.startCommandLine(u"write");
  entries("write=b\n");
  shell.startCommandLine(u"write");
  EXPECT_EQ(journal, Journal({"start a", "start b"}));
}

TEST_F(LauncherShellTest, WhatCannotBeStartedIsTold) {
  entries("write=a\n");
  inner.failure = {53, u"Fichier introuvable : a"};
  EXPECT_EQ(shell.startCommandLine(u"write"), inner.failure);
  EXPECT_EQ(shell.openInWord(u"/m.doc"), inner.failure);
}
