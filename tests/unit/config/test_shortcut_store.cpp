// SPDX-License-Identifier: GPL-3.0-or-later
#include "config/ShortcutStore.h"

#include <gtest/gtest.h>

#include "config/ConfigBoxes.h"
#include "config/ShortcutFile.h"
#include "support/Doubles.h"
#include "support/Scratch.h"
#include "text/LocaleData.h"

namespace {

using Rows = std::vector<Shortcut>;
using Boxes = std::vector<Box>;

const Shortcut kPlan{u"000000001", u"Été", u"C:\\plan.pdf"};
const Shortcut kFirst{u"000000001", u"ligne init", u"locfile:///C:/essai.txt"};
constexpr std::string_view kDefaultPlace = "nav/res_css/js/shortQrCode.js";

std::string bytesOfTable(std::int32_t freeId, Rows rows) {
  ShortcutTable table;
  table.load(freeId, std::move(rows));
  return shortcutBytes(table);
}

// A program folder with room for a table, and what the program holds.
class ShortcutStore : public testing::Test {
 protected:
  ShortcutStore() { folder.makeFolders("nav/res_css/js"); }

  ShortcutLoad load() {
    return loadShortcuts(settings, table, folder.text(), frenchLocale(), questions);
  }

  Scratch folder;
  Text defaultPath = folder.text(kDefaultPlace);
  Settings settings;
  ShortcutTable table;
  Journal journal;
  ScriptedQuestions questions{journal};
};

}  // namespace

TEST_F(ShortcutStore, TheDefaultPlaceIsBelowTheProgramFolder) {
  EXPECT_EQ(defaultShortcutPath(folder.text()), defaultPath);
}

TEST_F(ShortcutStore, LoadsTheTableAtTheConfiguredPlaceWithoutABox) {
  settings.shortcutPath = folder.text("table.js");
  writeBytes(settings.shortcutPath, bytesOfTable(5, {kPlan}));
  EXPECT_EQ(load(), ShortcutLoad::Loaded);
  EXPECT_EQ(table.freeId(), 5);
  EXPECT_EQ(table.rows(), Rows{kPlan});
  EXPECT_EQ(settings.shortcutPath, folder.text("table.js"));
  EXPECT_EQ(questions.boxes, Boxes{});
}

TEST_F(ShortcutStore, APathWhereNothingStandsBecomesTheDefaultOneWithABox) {
  writeBytes(defaultPath, bytesOfTable(5, {kPlan}));
  for (const Text& path : {Text(), folder.text("manquant.js")}) {
    settings.shortcutPath = path;
    questions.boxes.clear();
    questions.answers = {Answer::Ok};
    EXPECT_EQ(load(), ShortcutLoad::Loaded);
    EXPECT_EQ(settings.shortcutPath, defaultPath);
    EXPECT_EQ(table.rows(), Rows{kPlan});
    EXPECT_EQ(questions.boxes, Boxes{shortcutsNotFoundBox(defaultPath)});
  }
}

TEST_F(ShortcutStore, WithNoTableAnywhereYesCreatesOne) {
  settings.shortcutPath = folder.text("manquant.js");
  questions.answers = {Answer::Ok, Answer::Yes};
  EXPECT_EQ(load(), ShortcutLoad::Created);
  EXPECT_EQ(questions.boxes, (Boxes{shortcutsNotFoundBox(defaultPath), createShortcutsBox()}));
  EXPECT_EQ(table.freeId(), 2);
  EXPECT_EQ(table.rows(), Rows{kFirst});
  EXPECT_TRUE(bytesOf(defaultPath)
                  .starts_with("var FreeId=2\r\nvar tabObj = new Object();\r\n"
                               "tabObj[\"000000001\"]=\"ligne init_|_locfile:///C:/essai.txt\";\r\n"
                               "function ShortQrCode(myKey){\r\n"));
  EXPECT_EQ(bytesOf(defaultPath), shortcutBytes(table));
}

TEST_F(ShortcutStore, WithNoTableAnywhereNoEndsTheProgram) {
  settings.shortcutPath = defaultPath;
  questions.answers = {Answer::Ok, Answer::No, Answer::Ok};
  EXPECT_EQ(load(), ShortcutLoad::Ended);
  EXPECT_EQ(questions.boxes, (Boxes{shortcutsNotFoundBox(defaultPath), createShortcutsBox(),
                                    shortcutsMissingBox()}));
  EXPECT_FALSE(table.wasLoaded());
  EXPECT_EQ(bytesOf(defaultPath), "");
}

TEST_F(ShortcutStore, AnUnreadableTableLeadsToTheQuestionAlone) {
  settings.shortcutPath = folder.text("table.js");
  for (const std::string bytes : {"", "var FreeId=\r\nx\r\n", "var FreeId=4\r\nx\r\n",
                                  "var FreeId=4\r\nx\r\ntabObj[\"000000001\"]=\"a\";\r\n"}) {
    writeBytes(settings.shortcutPath, bytes);
    questions.boxes.clear();
    questions.answers = {Answer::No, Answer::Ok};
    EXPECT_EQ(load(), ShortcutLoad::Ended);
    EXPECT_EQ(questions.boxes, (Boxes{createShortcutsBox(), shortcutsMissingBox()}));
    EXPECT_EQ(bytesOf(settings.shortcutPath), bytes);
  }
}

TEST_F(ShortcutStore, YesForAnUnreadableTableWritesOverItWhereItStands) {
  settings.shortcutPath = folder.text("table.js");
  writeBytes(settings.shortcutPath, "abîmé");
  table.load(70, {kPlan, kPlan});
  questions.answers = {Answer::Yes};
  EXPECT_EQ(load(), ShortcutLoad::Created);
  EXPECT_EQ(bytesOf(settings.shortcutPath), bytesOfTable(2, {kFirst}));
  EXPECT_EQ(table.rows(), Rows{kFirst});
  EXPECT_EQ(folder.read("nav/res_css/js/shortQrCode_bak1.js"), "abîmé");
}

TEST_F(ShortcutStore, AnUnreadableTableThatCannotBeBackedUpStays) {
  const Scratch elsewhere;  // no nav folder below it: there is no room for the copy
  settings.shortcutPath = folder.text("table.js");
  writeBytes(settings.shortcutPath, "abîmé");
  questions.answers = {Answer::Yes, Answer::Ok, Answer::Ok};
  EXPECT_EQ(loadShortcuts(settings, table, elsewhere.text(), frenchLocale(), questions),
            ShortcutLoad::Ended);
  const Failure failure = backUpShortcuts(settings, elsewhere.text());
  EXPECT_EQ(questions.boxes,
            (Boxes{createShortcutsBox(), errorBox(u"backUpShortcuts", failure.description),
                   shortcutsMissingBox()}));
  EXPECT_EQ(bytesOf(settings.shortcutPath), "abîmé");
  EXPECT_FALSE(table.wasLoaded());
}

TEST_F(ShortcutStore, ATableElsewhereIsBackedUpBesideTheDefaultOne) {
  settings.shortcutPath = folder.text("table.js");
  writeBytes(settings.shortcutPath, "ailleurs");
  writeBytes(defaultPath, "ici");
  EXPECT_FALSE(backUpShortcuts(settings, folder.text()));
  EXPECT_EQ(folder.read("nav/res_css/js/shortQrCode_bak1.js"), "ailleurs");
}

TEST_F(ShortcutStore, AFolderInThePlaceOfTheTableIsNoTable) {
  settings.shortcutPath = folder.text();
  questions.answers = {Answer::No, Answer::Ok};
  EXPECT_EQ(load(), ShortcutLoad::Ended);
  EXPECT_EQ(questions.boxes, (Boxes{createShortcutsBox(), shortcutsMissingBox()}));
}

TEST_F(ShortcutStore, ANewTableThatCannotBeWrittenShowsTheWriteBox) {
  const Text elsewhere = folder.text("autre");  // no nav folder below it
  settings.shortcutPath = u"";
  questions.answers = {Answer::Ok, Answer::Yes, Answer::Ok};
  EXPECT_EQ(loadShortcuts(settings, table, elsewhere, frenchLocale(), questions),
            ShortcutLoad::Created);
  EXPECT_EQ(questions.boxes, (Boxes{shortcutsNotFoundBox(defaultShortcutPath(elsewhere)),
                                    createShortcutsBox(), shortcutsWriteFailedBox()}));
  EXPECT_EQ(table.rows(), Rows{kFirst});
}

TEST_F(ShortcutStore, WritesTheTableWithoutABox) {
  settings.shortcutPath = folder.text("table.js");
  writeBytes(settings.shortcutPath, std::string(5000, 'x'));
  table.load(3, {kPlan});
  EXPECT_TRUE(RecShortQrCode(settings, table, questions));
  EXPECT_EQ(bytesOf(settings.shortcutPath), bytesOfTable(3, {kPlan}));
  EXPECT_EQ(questions.boxes, Boxes{});
}

TEST_F(ShortcutStore, AWriteThatFailsShowsItsBox) {
  settings.shortcutPath = folder.text("manquant/table.js");
  table.load(3, {kPlan});
  questions.answers = {Answer::Ok};
  EXPECT_FALSE(RecShortQrCode(settings, table, questions));
  EXPECT_EQ(questions.boxes, Boxes{shortcutsWriteFailedBox()});
}

TEST_F(ShortcutStore, ATableThatWasNeverLoadedIsNeverWritten) {
  settings.shortcutPath = folder.text("table.js");
  writeBytes(settings.shortcutPath, "précieux");
  table.addRow(u"000000000\ta\tb");
  EXPECT_FALSE(RecShortQrCode(settings, table, questions));
  EXPECT_EQ(bytesOf(settings.shortcutPath), "précieux");
  EXPECT_EQ(questions.boxes, Boxes{});
}

TEST_F(ShortcutStore, TheExampleIsInstalledWhereNothingStands) {
  writeBytes(folder.text("shortQrCode_exemple.js"), "exemple");
  MAJshortQrCodeJs(folder.text());
  EXPECT_EQ(bytesOf(defaultPath), "exemple");
  EXPECT_EQ(bytesOf(folder.text("shortQrCode_exemple.js")), "exemple");
}

TEST_F(ShortcutStore, TheExampleNeverReplacesATable) {
  writeBytes(folder.text("shortQrCode_exemple.js"), "exemple");
  writeBytes(defaultPath, "à moi");
  MAJshortQrCodeJs(folder.text());
  EXPECT_EQ(bytesOf(defaultPath), "à moi");
}

TEST_F(ShortcutStore, WithoutAnExampleOrAFolderForItNothingHappens) {
  MAJshortQrCodeJs(folder.text());
  EXPECT_FALSE(std::filesystem::exists(toPath(defaultPath)));

  const Scratch bare;
  writeBytes(bare.text("shortQrCode_exemple.js"), "exemple");
  MAJshortQrCodeJs(bare.text());
  EXPECT_EQ(bare.entries(), 1u);
}

TEST_F(ShortcutStore, BackupsAreNumberedFromOneAndGapsAreFilled) {
  const Text begin = folder.text("nav/res_css/js/shortQrCode_bak");
  EXPECT_EQ(nextBackupPath(folder.text()), begin + u"1.js");
  writeBytes(begin + u"1.js", "");
  EXPECT_EQ(nextBackupPath(folder.text()), begin + u"2.js");
  for (const Text number : {u"2", u"3", u"5"}) writeBytes(begin + number + u".js", "");
  EXPECT_EQ(nextBackupPath(folder.text()), begin + u"4.js");
}

TEST(ShortcutCaption, CountsWithAPluralUnlessThereIsExactlyOne) {
  EXPECT_EQ(shortcutCaption(0), u"QrCodes : 0 Raccourcis créés");
  EXPECT_EQ(shortcutCaption(1), u"QrCodes : 1 Raccourci créé");
  EXPECT_EQ(shortcutCaption(2), u"QrCodes : 2 Raccourcis créés");
  EXPECT_EQ(shortcutCaption(10'000), u"QrCodes : 10000 Raccourcis créés");
}
