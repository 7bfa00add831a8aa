// SPDX-License-Identifier: GPL-3.0-or-later
#include "config/OptionsApply.h"

#include <gtest/gtest.h>

#include "config/ConfigBoxes.h"
#include "config/ConfigFile.h"
#include "config/OptionsBoxes.h"
#include "config/ShortcutFile.h"
#include "support/Doubles.h"
#include "support/Scratch.h"

namespace {

class OptionsApply : public testing::Test {
 protected:
  OptionsApply() {
    scratch.write("cookies.sqlite", "x");
    settings.cookiesPath = u"/ancien";
    settings.pollInterval = 1000;
    settings.shortcutPath = scratch.text("table.js");
    settings.backupPath = u"/sauvegarde";
    table.load(7, {{u"000000001", u"nom", u"adresse"}});
  }

  Applied apply() {
    const OptionsTarget target{
        settings, table,     programFolder,
        locale,   questions, [this](std::int32_t interval) { intervals.push_back(interval); }};
    return applyOptions(entries, target);
  }

  Scratch scratch;
  Text programFolder = scratch.text();
  LocaleData locale = frenchLocale();
  Settings settings;
  ShortcutTable table;
  Journal journal;
  ScriptedQuestions questions{journal};
  std::vector<std::int32_t> intervals;
  OptionsEntries entries{scratch.text("cookies.sqlite"), u"1200", std::int16_t{1}};
};

}  // namespace

TEST_F(OptionsApply, TakesTheEntriesAndWritesBothFiles) {
  Settings expected = settings;
  expected.cookiesPath = scratch.text("cookies.sqlite");
  expected.pollInterval = 1200;
  expected.browser = 1;

  EXPECT_EQ(apply(), Applied::Saved);
  EXPECT_EQ(settings, expected);
  EXPECT_EQ(intervals, std::vector<std::int32_t>{1200});
  EXPECT_EQ(scratch.read("config.cfg"), configBytes(expected, frenchLocale()));
  EXPECT_EQ(scratch.read("table.js"), shortcutBytes(table));
}

TEST_F(OptionsApply, APathThatIsNoReadableFileChangesNothing) {
  const Settings before = settings;
  const Text paths[] = {u"", u"   ", scratch.text("missing"), scratch.text()};
  for (const Text& path : paths) {
    entries.cookiesPath = path;
    questions.answers = {Answer::Yes};
    EXPECT_EQ(apply(), Applied::Rejected);
    questions.answers = {Answer::No};
    EXPECT_EQ(apply(), Applied::Ended);
  }
  EXPECT_EQ(questions.boxes, std::vector<Box>(8, cookieStoreRejectedBox()));
  EXPECT_EQ(settings, before);
  EXPECT_TRUE(intervals.empty());
  EXPECT_FALSE(std::filesystem::exists(scratch.path("config.cfg")));
  EXPECT_FALSE(std::filesystem::exists(scratch.path("table.js")));
}

TEST_F(OptionsApply, BlanksAroundThePathAreNoPartOfIt) {
  entries.cookiesPath = u" " + entries.cookiesPath + u" ";
  EXPECT_EQ(apply(), Applied::Saved);
  EXPECT_EQ(settings.cookiesPath, scratch.text("cookies.sqlite"));
}

TEST_F(OptionsApply, NumbersAreReadAndWrittenInTheUsersLocale) {
  locale.decimalSeparator = u'.';
  settings.scaleX = 567.5;
  entries.pollInterval = u"1200.4";
  EXPECT_EQ(apply(), Applied::Saved);
  EXPECT_EQ(settings.pollInterval, 1200);
  EXPECT_EQ(scratch.read("config.cfg"), configBytes(settings, locale));
  EXPECT_NE(configBytes(settings, locale), configBytes(settings, frenchLocale()));
}

TEST_F(OptionsApply, AnIntervalThatIsNoNumberAndAMissingChoiceKeepTheOldOnes) {
  entries.pollInterval = u"";
  entries.browser.reset();
  EXPECT_EQ(apply(), Applied::Saved);
  EXPECT_EQ(settings.pollInterval, 1000);
  EXPECT_EQ(settings.browser, 0);
  EXPECT_EQ(intervals, std::vector<std::int32_t>{1000});
}

TEST_F(OptionsApply, EachFileThatCannotBeWrittenHasItsBoxAndTheSettingsAreTaken) {
  programFolder = scratch.text("missing");
  settings.shortcutPath = scratch.text("missing/table.js");
  questions.answers = {Answer::Ok, Answer::Ok};
  EXPECT_EQ(apply(), Applied::Saved);
  EXPECT_EQ(questions.boxes, std::vector<Box>({configWriteFailedBox(), shortcutsWriteFailedBox()}));
  EXPECT_EQ(settings.cookiesPath, scratch.text("cookies.sqlite"));
}

TEST_F(OptionsApply, ATableThatWasNeverLoadedIsNotWritten) {
  ShortcutTable unread;
  scratch.write("table.js", "celle de l'utilisateur");
  const OptionsTarget target{settings, unread, programFolder, locale, questions, [](auto) {}};
  EXPECT_EQ(applyOptions(entries, target), Applied::Saved);
  EXPECT_EQ(scratch.read("table.js"), "celle de l'utilisateur");
}
