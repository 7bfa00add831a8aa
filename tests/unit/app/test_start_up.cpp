// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/StartUp.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "app/StartUpBoxes.h"
#include "config/ConfigBoxes.h"
#include "config/ConfigFile.h"
#include "config/ShortcutFile.h"
#include "platform/System.h"
#include "support/Doubles.h"
#include "support/Scratch.h"
#include "text/Paths.h"
#include "unit/bridge/BrowserStore.h"

namespace {

class RecordingHost : public StartUp::Host, public CookieWatcher::Host {
 public:
  explicit RecordingHost(Journal& journal) : journal_(journal) {}

  void addTrayIcon() override { journal_.push_back("tray icon"); }
  void setUpNotice() override { journal_.push_back("notice"); }
  void attachMenuBitmaps() override { journal_.push_back("bitmaps"); }
  void showSettings() override { journal_.push_back("settings shown"); }
  void pumpEvents() override { journal_.push_back("pump"); }
  void enableTimerFirstSearch() override { journal_.push_back("TimerFirstSearch on"); }
  void lockMenus(bool lock) override { journal_.push_back(lock ? "lock" : "unlock"); }
  void MenuParam_Click() override { journal_.push_back("MenuParam_Click"); }
  void MenuAbout_Click() override { journal_.push_back("MenuAbout_Click"); }
  void searchCookieStore() override { journal_.push_back("search"); }
  void enableTimerCookies(bool on) override {
    journal_.push_back(on ? "TimerCookies on" : "TimerCookies off");
  }
  void saveOffsetCookie() override { journal_.push_back("save offset"); }
  void showNotice(const Text&) override { journal_.push_back("show notice"); }
  void valueHandled(const Text&) override { journal_.push_back("value handled"); }

 private:
  Journal& journal_;
};

// A program folder with everything in its place, and Firefox as the default browser.
class StartUpTest : public testing::Test {
 protected:
  StartUpTest() {
    companion.programFolder = scratch.text();
    companion.locale = frenchLocale();
    scratch.write("cookies.sqlite", "no command here");
    scratch.write("nav/res_css/js/shortQrCode.js", table("000000001", 2));
    writeConfig();
    browser.values[Text(kHttpOpenCommand)] = u"firefox.desktop";
  }

  static std::string table(const std::string& key, int freeId) {
    return "var FreeId=" + std::to_string(freeId) +
           "\r\nvar tabObj = new Object();\r\n"
           "tabObj[\"" +
           key + "\"]=\"nom_|_web://a\";\r\nfunction ShortQrCode(myKey){\r\n";
  }

  void writeConfig() {
    Settings settings;
    settings.cookiesPath = cookiesPath;
    settings.pollInterval = interval;
    settings.shortcutPath = shortcutPath;
    scratch.write("config.cfg", configBytes(settings, frenchLocale()));
  }

  bool load(bool first = true) { return startUp.Form_Load(first, u"/opt/tavrollo/tavrollo"); }

  bool happened(const std::string& what) const {
    return std::find(journal.begin(), journal.end(), what) != journal.end();
  }

  Scratch scratch;
  Text cookiesPath = scratch.text("cookies.sqlite");
  Text shortcutPath = scratch.text("nav/res_css/js/shortQrCode.js");
  std::int32_t interval = 750;

  Journal journal;
  Companion companion;
  RecordingShell shell{journal};
  ScriptedQuestions questions{journal};
  FakeBrowser browser{journal};
  RecordingHost host{journal};
  CookieStoreReader reader{companion.trace, {}};
  CommandActions actions{{shell, companion.shortcuts, [] {}, [](const Text&) {}, [](bool) {},
                          [] { return Text(u"/"); }}};
  CookieWatcher watcher{companion.settings, reader, actions, companion.trace, host};
  StartUp startUp{{companion, reader, watcher, shell, questions, browser, host}};
};

const std::string kReadOpen = "read HKEY_CLASSES_ROOT\\http\\shell\\open\\command\\\\";

TEST_F(StartUpTest, GoesThroughItsStepsInOrder) {
  EXPECT_TRUE(load());
  EXPECT_EQ(journal, Journal({"tray icon", "notice", "bitmaps", "settings shown", "pump",
                              "TimerFirstSearch on", kReadOpen,
                              "execute " + scratch.path("nav/res_css/htm/start.html"), "lock",
                              "MenuAbout_Click"}));
}

TEST_F(StartUpTest, ReadsTheSettingsAndTheShortcuts) {
  load();
  EXPECT_EQ(companion.settings.cookiesPath, cookiesPath);
  EXPECT_EQ(companion.settings.pollInterval, 750);
  ASSERT_EQ(companion.shortcuts.rows().size(), 1u);
  EXPECT_EQ(companion.shortcuts.rows()[0].name, u"nom");
  EXPECT_EQ(companion.shortcuts.freeId(), 2);
}

TEST_F(StartUpTest, OpensTheStartPageInTheRootFolder) {
  load();
  ASSERT_EQ(shell.requests.size(), 1u);
  EXPECT_EQ(shell.requests[0].operation, u"open");
  EXPECT_EQ(shell.requests[0].parameters, u"");
  EXPECT_EQ(shell.requests[0].directory, startInFolder(currentFolder(), nativeSeparator()));
  EXPECT_EQ(shell.requests[0].show, ShowState::Normal);
}

TEST_F(StartUpTest, AShortcutPathOutsideAWebApplicationGivesAStartPageWithoutARoot) {
  shortcutPath = scratch.text("ailleurs/shortQrCode.js");
  scratch.write("ailleurs/shortQrCode.js", table("000000001", 2));
  writeConfig();
  EXPECT_TRUE(load());
  EXPECT_EQ(shell.requests.at(0).file, nativePath(u"res_css\\htm\\start.html"));
}

TEST_F(StartUpTest, ASecondInstanceAsksAndRelaunchesOnYes) {
  questions.answers = {Answer::Yes};
  EXPECT_FALSE(load(false));
  EXPECT_EQ(questions.boxes.at(0), alreadyRunningBox());
  EXPECT_EQ(journal, Journal({"ask Tavrollo : Lancements multiples",
                              "execute " + toUtf8(nativePath(u"/opt/tavrollo/reload"))}));
}

TEST_F(StartUpTest, ASecondInstanceEndsOnNoWithoutTouchingAnything) {
  questions.answers = {Answer::No};
  EXPECT_FALSE(load(false));
  EXPECT_EQ(journal, Journal({"ask Tavrollo : Lancements multiples"}));
}

TEST_F(StartUpTest, LoadsTheSavedOffset) {
  scratch.write("offsetCookie.dat", "4711\r\n");
  load();
  EXPECT_EQ(reader.cookieOffset(), 4711);
}

TEST_F(StartUpTest, AnOffsetThatIsNoNumberCountsAsZero) {
  scratch.write("offsetCookie.dat", "abc\r\n");
  load();
  EXPECT_EQ(reader.cookieOffset(), 0);
}

TEST_F(StartUpTest, WithoutAConfigurationNoEndsTheProgram) {
  std::filesystem::remove(scratch.path("config.cfg"));
  questions.answers = {Answer::No};
  EXPECT_FALSE(load());
  EXPECT_EQ(questions.boxes.at(0), configUnreadableBox());
  EXPECT_FALSE(happened("search"));
}

TEST_F(StartUpTest, WithoutAConfigurationYesSearchesAndStopsThere) {
  std::filesystem::remove(scratch.path("config.cfg"));
  questions.answers = {Answer::Yes};
  EXPECT_TRUE(load());
  EXPECT_EQ(journal, Journal({"tray icon", "notice", "bitmaps",
                              "ask Tavrollo : Initialisation du programme", "search"}));
  EXPECT_FALSE(std::filesystem::exists(scratch.path("config.cfg")));
}

TEST_F(StartUpTest, AConfigurationThatEndsEarlyKeepsWhatWasRead) {
  const std::string whole = scratch.read("config.cfg");
  scratch.write("config.cfg", whole.substr(0, whole.find("\n750\r") + 1));
  questions.answers = {Answer::Yes};
  EXPECT_TRUE(load());
  EXPECT_EQ(companion.settings.cookiesPath, cookiesPath);
  EXPECT_EQ(companion.settings.shortcutPath, shortcutPath);
  EXPECT_EQ(companion.settings.scaleX, 567.0);
  EXPECT_TRUE(happened("search"));
}

TEST_F(StartUpTest, AMissingShortcutTableFallsBackToTheDefaultPathWithABox) {
  const Text standard = shortcutPath;
  shortcutPath = scratch.text("nulle/part/shortQrCode.js");
  writeConfig();
  const std::string before = scratch.read("config.cfg");
  questions.answers = {Answer::Ok};
  EXPECT_TRUE(load());
  EXPECT_EQ(questions.boxes.at(0), shortcutPathInvalidBox(standard));
  EXPECT_EQ(companion.settings.shortcutPath, standard);
  EXPECT_EQ(scratch.read("config.cfg"), before);
}

TEST_F(StartUpTest, AFolderIsNoShortcutTable) {
  const Text standard = shortcutPath;
  shortcutPath = scratch.text("nav/res_css/js");
  writeConfig();
  questions.answers = {Answer::Ok};
  EXPECT_TRUE(load());
  EXPECT_EQ(questions.boxes, std::vector<Box>{shortcutPathInvalidBox(standard)});
  EXPECT_EQ(companion.settings.shortcutPath, standard);
}

TEST_F(StartUpTest, AFolderIsNoCookieStore) {
  cookiesPath = scratch.text("nav");
  writeConfig();
  questions.answers = {Answer::No};
  EXPECT_FALSE(load());
  EXPECT_EQ(questions.boxes, std::vector<Box>{cookieStoreInaccessibleBox(cookiesPath)});
}

TEST_F(StartUpTest, TheHostsThatTheUserListedMayGiveCommands) {
  for (const bool listed : {false, true}) {
    cookiesPath = scratch.text(listed ? "listed.sqlite" : "foreign.sqlite");
    writeConfig();
    FirefoxStore store(cookiesPath);
    store.setCommand("notepad_|_x_|_", "ecole.example");
    if (listed) scratch.write("hotes_autorises.txt", "ecole.example\r\n");
    EXPECT_TRUE(startUp.InitVar());
    EXPECT_EQ(reader.Extract(cookiesPath), listed ? u"notepad_|_x_|_" : u"");
  }
}

TEST_F(StartUpTest, TheMissingTableIsToldOfBeforeALaterItemFails) {
  const Text standard = shortcutPath;
  shortcutPath = scratch.text("nulle/part/shortQrCode.js");
  writeConfig();
  const std::string whole = scratch.read("config.cfg");
  scratch.write("config.cfg", whole.substr(0, whole.find("\n567\r") + 1));
  questions.answers = {Answer::Ok, Answer::No};
  EXPECT_FALSE(load());
  EXPECT_EQ(questions.boxes,
            (std::vector<Box>{shortcutPathInvalidBox(standard), configUnreadableBox()}));
}

TEST_F(StartUpTest, ReadingAgainBeginsWithTheDefaultTableAndScales) {
  load();
  companion.settings.shortcutPath = u"/ailleurs/shortQrCode.js";
  companion.settings.scaleX = companion.settings.scaleY = 1;
  std::filesystem::remove(scratch.path("config.cfg"));
  questions.answers = {Answer::Yes};
  EXPECT_TRUE(startUp.InitVar());
  EXPECT_EQ(companion.settings.shortcutPath, shortcutPath);
  EXPECT_EQ(companion.settings.scaleX, 567.0);
  EXPECT_EQ(companion.settings.scaleY, 567.0);
  EXPECT_EQ(companion.settings.cookiesPath, cookiesPath);
}

// The search that follows writes the table in memory to where the settings say.
TEST_F(StartUpTest, AnUnreadableConfigurationThatNamesAnotherTableLoadsThatOne) {
  load();
  const Text first = shortcutPath;
  shortcutPath = scratch.text("autre/shortQrCode.js");
  scratch.write("autre/shortQrCode.js", table("000000009", 10));
  writeConfig();
  const std::string whole = scratch.read("config.cfg");
  scratch.write("config.cfg", whole.substr(0, whole.find("\n567\r") + 1));
  questions.answers = {Answer::Yes};
  EXPECT_TRUE(startUp.InitVar());
  EXPECT_EQ(companion.settings.shortcutPath, shortcutPath);
  ASSERT_EQ(companion.shortcuts.rows().size(), 1u);
  EXPECT_EQ(companion.shortcuts.rows()[0].key, u"000000009");
}

TEST_F(StartUpTest, AnUnreadableConfigurationKeepsWhatIsUnsavedInTheSameTable) {
  load();
  companion.shortcuts.addRow(u"000000002\tneuf\tweb://b");
  std::filesystem::remove(scratch.path("config.cfg"));
  questions.answers = {Answer::Yes};
  EXPECT_TRUE(startUp.InitVar());
  EXPECT_EQ(companion.shortcuts.rows().size(), 2u);
}

TEST_F(StartUpTest, BlanksAroundAPathAreNoPartOfIt) {
  cookiesPath += u"  ";
  shortcutPath += u" ";
  writeConfig();
  EXPECT_TRUE(load());
  EXPECT_EQ(companion.settings.cookiesPath, scratch.text("cookies.sqlite"));
  EXPECT_EQ(companion.settings.shortcutPath, scratch.text("nav/res_css/js/shortQrCode.js"));
  EXPECT_TRUE(questions.boxes.empty());
}

TEST_F(StartUpTest, ScalesAreReadInTheUsersLocale) {
  companion.locale.decimalSeparator = u'.';
  std::string bytes = scratch.read("config.cfg");
  bytes.replace(bytes.find("\n567\r"), 5, "\n567.5\r");
  scratch.write("config.cfg", bytes);
  EXPECT_TRUE(load());
  EXPECT_EQ(companion.settings.scaleX, 568.0);
}

TEST_F(StartUpTest, TheStoreAsItStandsCountsAsSeen) {
  scratch.write("cookies.sqlite", "xxTavr1CodeToExeshellexe_|_/vieux_|__e-o-v_");
  load();
  journal.clear();
  watcher.tick();
  EXPECT_EQ(journal, Journal({"pump"}));
}

TEST_F(StartUpTest, InstallsTheExampleTableOnFirstUse) {
  std::filesystem::remove(scratch.path("nav/res_css/js/shortQrCode.js"));
  scratch.write("shortQrCode_exemple.js", table("000000004", 5));
  EXPECT_TRUE(load());
  EXPECT_EQ(companion.shortcuts.freeId(), 5);
}

TEST_F(StartUpTest, LeavesATableThatStandsAlone) {
  scratch.write("shortQrCode_exemple.js", table("000000004", 5));
  EXPECT_TRUE(load());
  EXPECT_EQ(companion.shortcuts.freeId(), 2);
}

TEST_F(StartUpTest, RefusingANewShortcutTableEndsTheProgram) {
  std::filesystem::remove(scratch.path("nav/res_css/js/shortQrCode.js"));
  questions.answers = {Answer::Ok, Answer::Ok, Answer::No, Answer::Ok};
  EXPECT_FALSE(load());
  ASSERT_EQ(questions.boxes.size(), 4u);
  EXPECT_EQ(questions.boxes[2], createShortcutsBox());
  EXPECT_EQ(questions.boxes[3], shortcutsMissingBox());
  EXPECT_FALSE(happened("TimerFirstSearch on"));
}

TEST_F(StartUpTest, AMissingCookieStoreEndsTheProgramOnNo) {
  std::filesystem::remove(scratch.path("cookies.sqlite"));
  questions.answers = {Answer::No};
  EXPECT_FALSE(load());
  EXPECT_EQ(questions.boxes.at(0), cookieStoreInaccessibleBox(cookiesPath));
  EXPECT_FALSE(happened("MenuParam_Click"));
}

TEST_F(StartUpTest, AMissingCookieStoreOpensTheSettingsOnYesAndStopsThere) {
  std::filesystem::remove(scratch.path("cookies.sqlite"));
  questions.answers = {Answer::Yes};
  EXPECT_TRUE(load());
  EXPECT_EQ(journal.back(), "MenuParam_Click");
  EXPECT_FALSE(happened("TimerFirstSearch on"));
  EXPECT_FALSE(happened(kReadOpen));
  EXPECT_FALSE(happened("lock"));
  EXPECT_TRUE(shell.requests.empty());
}

TEST_F(StartUpTest, CancelInTheBrowserQuestionEndsBeforeTheStartPage) {
  browser.values.clear();
  questions.answers = {Answer::Cancel};
  EXPECT_FALSE(load());
  EXPECT_TRUE(shell.requests.empty());
  EXPECT_FALSE(happened("lock"));
}

TEST_F(StartUpTest, NoInTheBrowserQuestionGoesOn) {
  browser.values.clear();
  questions.answers = {Answer::No};
  EXPECT_TRUE(load());
  EXPECT_EQ(journal.back(), "MenuAbout_Click");
}

TEST_F(StartUpTest, AnIntervalOfZeroOrLessCountsAsAThousandAndIsTraced) {
  for (const std::int32_t wrong : {0, -5}) {
    interval = wrong;
    writeConfig();
    EXPECT_TRUE(startUp.InitVar());
    EXPECT_EQ(companion.settings.pollInterval, 1000);
    EXPECT_NE(companion.trace.messages().back().find(u"temporisation"), Text::npos);
  }
}

TEST_F(StartUpTest, AnIntervalOfZeroIsRefusedThoughTheFileEndsBehindIt) {
  interval = 0;
  writeConfig();
  const std::string whole = scratch.read("config.cfg");
  scratch.write("config.cfg", whole.substr(0, whole.find("\r\n0\r\n;chemin") + 5));
  questions.answers = {Answer::Yes};
  EXPECT_TRUE(startUp.InitVar());
  EXPECT_EQ(questions.boxes, std::vector<Box>{configUnreadableBox()});
  EXPECT_EQ(companion.settings.pollInterval, 1000);
}

TEST_F(StartUpTest, ACommandAlreadyInTheStoreIsNotRunAndANewOneIs) {
  scratch.write("cookies.sqlite", "xxTavr1CodeToExeshellexe_|_/vieux_|__e-o-v_");
  load();
  watcher.primeLastCommand();
  journal.clear();
  scratch.write("cookies.sqlite", "xxxTavr1CodeToExeshellexe_|_/vieux_|__e-o-v_");
  watcher.tick();
  EXPECT_FALSE(happened("execute /vieux"));
  scratch.write("cookies.sqlite", "xxTavr1CodeToExeshellexe_|_/nouveau_|__e-o-v_");
  watcher.tick();
  EXPECT_TRUE(happened("execute " + toUtf8(nativePath(u"/nouveau"))));
}

}  // namespace
