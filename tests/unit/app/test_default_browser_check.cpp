// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include "app/DefaultBrowserCheck.h"
#include "app/StartUpBoxes.h"
#include "support/Doubles.h"

namespace {

const std::string kReadOpen = "read HKEY_CLASSES_ROOT\\http\\shell\\open\\command\\\\";
const std::string kReadChoice =
    "read HKEY_CURRENT_USER\\Software\\Microsoft\\Windows\\Shell\\Associations\\UrlAssociations"
    "\\http\\UserChoice\\Progid";
const std::string kAsk = "ask Tavrollo : FireFox par défaut";

struct Check {
  Journal journal;
  FakeBrowser browser{journal};
  ScriptedQuestions questions{journal};

  bool run() { return checkDefaultBrowser(browser, questions); }
};

TEST(DefaultBrowserCheck, AnOpenCommandThatNamesFirefoxEndsTheCheck) {
  Check check;
  check.browser.values[Text(kHttpOpenCommand)] = u"\"C:\\Mozilla FireFOX\\firefox.exe\" -osint";
  EXPECT_TRUE(check.run());
  EXPECT_EQ(check.journal, Journal({kReadOpen}));
}

TEST(DefaultBrowserCheck, TheUsersChoiceIsReadWhenTheOpenCommandNamesAnother) {
  Check check;
  check.browser.values[Text(kHttpOpenCommand)] = u"chromium.desktop";
  check.browser.values[Text(kHttpUserChoice)] = u"FIREFOXURL-308046B0AF4A39CB";
  EXPECT_TRUE(check.run());
  EXPECT_EQ(check.journal, Journal({kReadOpen, kReadChoice}));
}

TEST(DefaultBrowserCheck, BothUnreadableAsks) {
  Check check;
  check.browser.error = 0x80070005;
  check.questions.answers = {Answer::No};
  EXPECT_TRUE(check.run());
  EXPECT_EQ(check.journal, Journal({kReadOpen, kReadChoice, kAsk}));
  EXPECT_EQ(check.questions.boxes.at(0), firefoxDefaultBox());
}

TEST(DefaultBrowserCheck, YesWritesTheFixedOpenCommand) {
  Check check;
  check.questions.answers = {Answer::Yes};
  EXPECT_TRUE(check.run());
  EXPECT_EQ(check.journal.back(),
            "write HKEY_CLASSES_ROOT\\http\\shell\\open\\command\\\\ = "
            "\"C:\\Program Files (x86)\\Mozilla Firefox\\firefox.exe\" -osint -url \"%1\"");
}

TEST(DefaultBrowserCheck, CancelEndsTheProgramAndWritesNothing) {
  Check check;
  check.questions.answers = {Answer::Cancel};
  EXPECT_FALSE(check.run());
  EXPECT_EQ(check.journal, Journal({kReadOpen, kReadChoice, kAsk}));
}

TEST(ReadRegister, AFailedReadGivesAnEmptyText) {
  Journal journal;
  FakeBrowser browser(journal);
  EXPECT_EQ(readRegister(browser, kHttpOpenCommand), u"");
  browser.values[Text(kHttpOpenCommand)] = u"firefox.desktop";
  EXPECT_EQ(readRegister(browser, kHttpOpenCommand), u"firefox.desktop");
}

TEST(RegExists, OnlyNotFoundErrorsMeanThatItDoesNotExist) {
  struct Row {
    std::uint32_t error;
    bool exists;
  };
  for (const Row& row : {Row{0x80070002, false}, Row{0x80070003, false}, Row{0x80070005, true},
                         Row{0x80004005, true}}) {
    Journal journal;
    FakeBrowser browser(journal);
    browser.error = row.error;
    EXPECT_EQ(RegExists(browser, kFirefoxApplication), row.exists) << std::hex << row.error;
  }
}

TEST(RegExists, AValueThatReadsExists) {
  Journal journal;
  FakeBrowser browser(journal);
  browser.values[Text(kFirefoxApplication)] = u"";
  EXPECT_TRUE(RegExists(browser, kFirefoxApplication));
}

}  // namespace
