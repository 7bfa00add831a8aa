// SPDX-License-Identifier: GPL-3.0-or-later
#include "bridge/CommandActions.h"

#include <gtest/gtest.h>

#include "text/Numbers.h"
#include "text/Paths.h"
#include "unit/bridge/RecordingShell.h"

namespace {

class CommandActionsTest : public testing::Test {
 protected:
  using Fields = std::vector<Text>;

  std::optional<Text> carryOut(const Fields& fields) { return actions_.carryOut(fields); }

  std::vector<Text> done_;  // in order
  RecordingShell shell_{done_};
  ShortcutTable shortcuts_;
  CommandActions actions_{
      {.shell = shell_,
       .shortcuts = shortcuts_,
       .recShortQrCode =
           [this] {
             done_.push_back(u"write table of " +
                             numberText(static_cast<std::int64_t>(shortcuts_.rows().size())) +
                             u" rows, FreeId " + numberText(std::int64_t{shortcuts_.freeId()}));
           },
       .writePageKey = [this](const Text& key) { done_.push_back(u"key " + key); },
       .lockMenus = [this](bool lock) { done_.push_back(lock ? u"lock" : u"unlock"); },
       .currentFolder = [] { return Text(u"D:\\work\\here"); }}};
};

Text open(const Text& file, const Text& parameters) {
  return u"open file=" + file + u" parameters=" + parameters + u" directory=" +
         startInFolder(u"D:\\work\\here", nativeSeparator()) + u" maximised";
}

}  // namespace

TEST_F(CommandActionsTest, NotepadStartsTheEditorWithoutQuotes) {
  EXPECT_EQ(carryOut({u"notepad", u"C:/dir/a b.txt", u""}), u"Lancement de NotePad");
  EXPECT_EQ(done_, Fields{u"run notepad " + nativePath(u"C:\\dir\\a b.txt")});
}

TEST_F(CommandActionsTest, ShellexeOpensTheDocumentMaximised) {
  EXPECT_EQ(carryOut({u"shellexe", u"C:/dir/a.pdf", u"ignored", u""}),
            u"Lancement depuis l'extension");
  EXPECT_EQ(done_, Fields{open(nativePath(u"C:\\dir\\a.pdf"), u"")});
}

TEST_F(CommandActionsTest, RunappStartsTheProgramWithItsParameters) {
  EXPECT_EQ(carryOut({u"runapp", u"C:/dir/x.exe", u"/a b/c", u"further"}),
            u"Lancement de l'application");
  EXPECT_EQ(carryOut({u"runapp", u"x", u""}), u"Lancement de l'application");
  EXPECT_EQ(done_, (Fields{open(nativePath(u"C:\\dir\\x.exe"), u"/a b/c"), open(u"x", u"")}));
}

TEST_F(CommandActionsTest, BothSeparatorsAreReadAsTheSystemsOwn) {
  const Text written = u"dir\\a/b";
  const Text native = Text(u"dir") + nativeSeparator() + u"a" + nativeSeparator() + u"b";
  for (const Text word : {u"notepad", u"shellexe", u"runapp"}) carryOut({word, written, u""});
  EXPECT_EQ(done_, (Fields{u"run notepad " + native, open(native, u""), open(native, u"")}));
}

TEST_F(CommandActionsTest, RunappGivesTheProgramTheBytesThatThePageWrote) {
  carryOut({u"runapp", u"x", u"--titre \"Å“uf Ã\u00A0 la coque\""});
  EXPECT_EQ(done_, Fields{open(u"x", u"--titre \"œuf à la coque\"")});
}

TEST_F(CommandActionsTest, AnEmptyPathStaysEmpty) {
  carryOut({u"notepad", u"", u""});
  carryOut({u"shellexe", u"", u""});
  carryOut({u"runapp", u"", u""});
  EXPECT_EQ(done_, (Fields{u"run notepad ", open(u"", u""), open(u"", u"")}));
}

TEST_F(CommandActionsTest, AFailedStartGivesTheMessageAllTheSame) {
  shell_.failure = {53, u"Fichier introuvable"};
  EXPECT_EQ(carryOut({u"notepad", u"x", u""}), u"Lancement de NotePad");
  EXPECT_EQ(carryOut({u"shellexe", u"x", u""}), u"Lancement depuis l'extension");
  EXPECT_EQ(carryOut({u"runapp", u"x", u""}), u"Lancement de l'application");
}

TEST_F(CommandActionsTest, CreatelinkAddsARowWithTheNextKeyAndWritesTheTable) {
  shortcuts_.load(42, {{u"000000007", u"old", u"a"}});
  EXPECT_EQ(carryOut({u"createlink", u"locC:/Ã©tude.pdf", u"Ã‰tude"}), u"Raccourci Créé");
  ASSERT_EQ(shortcuts_.rows().size(), 2u);
  EXPECT_EQ(shortcuts_.rows()[1], (Shortcut{u"000000042", u"Étude", u"C:/étude.pdf"}));
  EXPECT_EQ(shortcuts_.freeId(), 43);
  EXPECT_EQ(done_, Fields{u"write table of 2 rows, FreeId 43"});
}

TEST_F(CommandActionsTest, CreatelinkDropsThreeCharactersOfTheTargetAlsoWhenThereAreFewer) {
  const struct {
    Text target;
    Text address;
  } rows[] = {{u"", u""}, {u"ab", u""}, {u"abc", u""}, {u"abcd", u"d"}};
  for (const auto& row : rows) {
    carryOut({u"createlink", row.target, u"n"});
    EXPECT_EQ(shortcuts_.rows().back().address, row.address);
  }
}

TEST_F(CommandActionsTest, IniWritesTheKeyAndThenUnlocks) {
  EXPECT_EQ(carryOut({u"ini", u"clé \"1\"", u""}), u"");
  EXPECT_EQ(done_, (Fields{u"key clé \"1\"", u"unlock"}));
}

TEST_F(CommandActionsTest, LzckUnlocksForFalseAloneAndExactly) {
  const struct {
    Text field;
    Text action;
  } rows[] = {{u"false", u"unlock"}, {u"FALSE", u"lock"},  {u"False", u"lock"}, {u"true", u"lock"},
              {u"", u"lock"},        {u"false ", u"lock"}, {u"0", u"lock"}};
  for (const auto& row : rows) {
    done_.clear();
    EXPECT_EQ(carryOut({u"lzck", row.field, u""}), u"");
    EXPECT_EQ(done_, Fields{row.action}) << toPath(row.field);
  }
}

TEST_F(CommandActionsTest, AnyOtherWordDoesNothingAndHasAnEmptyMessage) {
  for (const Text word : {u"", u"NOTEPAD", u"notepad ", u"calc", u"inI"}) {
    EXPECT_EQ(carryOut({word, u"x", u"y"}), u"");
  }
  EXPECT_EQ(done_, Fields{});
}

TEST_F(CommandActionsTest, AMissingFieldMeansNoActionAndNoMessage) {
  for (const Text word :
       {u"notepad", u"shellexe", u"runapp", u"createlink", u"ini", u"lzck", u"x"}) {
    EXPECT_EQ(carryOut({word}), std::nullopt);
  }
  EXPECT_EQ(carryOut({u"runapp", u"x"}), std::nullopt);
  EXPECT_EQ(carryOut({u"createlink", u"locx"}), std::nullopt);
  EXPECT_EQ(carryOut({}), std::nullopt);
  EXPECT_EQ(done_, Fields{});
  EXPECT_EQ(shortcuts_.rows().size(), 0u);
  EXPECT_EQ(shortcuts_.freeId(), 0);
}

TEST_F(CommandActionsTest, WhatNeedsOneFieldTakesOne) {
  EXPECT_EQ(carryOut({u"notepad", u"x"}), u"Lancement de NotePad");
  EXPECT_EQ(carryOut({u"lzck", u"false"}), u"");
  EXPECT_EQ(done_, (Fields{u"run notepad x", u"unlock"}));
}
