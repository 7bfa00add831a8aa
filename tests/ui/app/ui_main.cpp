// SPDX-License-Identifier: GPL-3.0-or-later
// The main window with its real timers, on a real program folder and a store that the test writes.
#include <QAbstractButton>
#include <QEventLoop>
#include <QLabel>
#include <QLineEdit>
#include <QSignalSpy>
#include <QSystemTrayIcon>
#include <QTableWidget>
#include <QTimer>
#include <algorithm>
#include <chrono>
#include <cstdio>

#include "app/StartUpBoxes.h"
#include "app/frmMain.h"
#include "config/Addresses.h"
#include "config/ConfigBoxes.h"
#include "config/ConfigFile.h"
#include "config/OptionsBoxes.h"
#include "config/SearchBoxes.h"
#include "platform/Desktop.h"
#include "platform/Files.h"
#include "platform/System.h"
#include "platform/Version.h"
#include "platform/qt/QtText.h"
#include "support/Doubles.h"
#include "support/Scratch.h"
#include "sync/SyncTexts.h"
#include "text/Numbers.h"
#include "text/Paths.h"
#include "tray/Launchers.h"
#include "tray/MenuBoxes.h"
#include "tray/MenuTree.h"
#include "tray/TrayManager.h"
#include "tray/UpdateCheck.h"
#include "ui/Trayer.h"
#include "ui/UiMain.h"
#include "windows/SplashTexts.h"

namespace {

std::string store(const std::string& value) {
  return "xxx\nTavr1CodeToExe" + value + "_e-o-v_xxxxxxxxxxx";
}

// Lets the program live for a while behind each box, as a user who reads does.
class SlowQuestions : public ScriptedQuestions {
 public:
  using ScriptedQuestions::ScriptedQuestions;
  Answer ask(const Box& box) override {
    if (box == noTrayBox()) {  // the test's screen has none: no question of the test's
      ++missingTrays;
      return Answer::Ok;
    }
    const Answer answer = ScriptedQuestions::ask(box);
    if (whileOpen) waitUntil(whileOpen);
    return answer;
  }
  std::function<bool()> whileOpen;
  int missingTrays = 0;
};

class frmMainTest : public testing::Test {
 protected:
  frmMainTest() {
    companion.programFolder = folder.text();
    companion.locale = frenchLocale();
    folder.write("nav/res_css/js/shortQrCode.js",
                 "var FreeId=42\r\nvar tabObj = new Object();\r\nfunction ShortQrCode(myKey){\r\n");
    folder.write("nav/res_css/js/rwCookies.js", "var ps=\"\";\r\nreste\r\n");
    folder.write("cookies.sqlite", store("notepad_|_/ancien_|_"));
    browser.values[Text(kHttpOpenCommand)] = u"firefox.desktop";
    Settings settings;
    settings.cookiesPath = folder.text("cookies.sqlite");
    settings.pollInterval = 20;
    settings.shortcutPath = folder.text("nav/res_css/js/shortQrCode.js");
    folder.write("config.cfg", configBytes(settings, frenchLocale()));
  }

  // Starts the program and waits until it watches.
  void start() {
    main = std::make_unique<frmMain>(companion, shell, questions, browser);
    ASSERT_TRUE(main->Form_Load(true));
    timer("TimerFirstSearch").start(20);  // rather than its three seconds
    ASSERT_TRUE(waitUntil([this] { return watching(); }));
    journal.clear();
  }

  // The program's window called `name`, when it is on the screen.
  static QWidget* window(const char* name) {
    for (QWidget* window : QApplication::topLevelWidgets()) {
      if (window->objectName() == QLatin1String(name) && window->isVisible()) return window;
    }
    return nullptr;
  }

  QTimer& timer(const char* name) {
    auto* found = main->findChild<QTimer*>(QString::fromLatin1(name));
    if (!found) throw std::runtime_error(std::string("no timer called ") + name);
    return *found;
  }

  // From now on the user's home is a folder of the test's.
  void liveInTheFolder() const {
    qputenv("HOME", QByteArray::fromStdString(folder.path("home")));
    qunsetenv("XDG_CONFIG_HOME");
    qunsetenv("APPDATA");
  }

  bool watching() { return timer("TimerCookies").isActive(); }

  void give(const std::string& value) { folder.write("cookies.sqlite", store(value)); }

  bool happened(const std::string& what) const {
    return std::find(journal.begin(), journal.end(), what) != journal.end();
  }
  bool comes(const std::string& what) {
    return waitUntil([&] { return happened(what); });
  }

  // The entry of the tray menu called `name`.
  QAction& entry(const char* name) {
    for (QWidget* window : QApplication::topLevelWidgets()) {
      if (window->objectName() != QStringLiteral("MenuIcon")) continue;
      const QString wanted = QString::fromLatin1(name);
      if (auto* menu = window->findChild<QMenu*>(wanted)) return *menu->menuAction();
      if (auto* action = window->findChild<QAction*>(wanted)) return *action;
    }
    throw std::runtime_error(std::string("no entry called ") + name);
  }

  // Starts, and opens the synchronisation on a backup whose shortcut table is the newer one.
  void compareWithBackupOf(const std::string& table) {
    folder.makeFolders("nav/user_datas");
    folder.write("stick/shortQrCode.js", table);
    start();
    const std::filesystem::path live(folder.path("nav/res_css/js/shortQrCode.js"));
    std::filesystem::last_write_time(
        live, std::filesystem::last_write_time(live) - std::chrono::hours(1));
    companion.settings.backupPath = folder.text("stick");
    main->lockMenus(false);
    questions.answers = {Answer::Ok};
    entry("MenuSynchro").trigger();
    control<QAbstractButton>(*window("frmSynchro"), "cmdCompare").click();
  }

  // For an end that comes behind new windows: the toolkit's threads are not there after a fork. The
  // test starts anew in that process.
  static void endInAProcessOfItsOwn() { GTEST_FLAG_SET(death_test_style, "threadsafe"); }

  Scratch folder;
  Journal journal;
  Companion companion;
  RecordingShell shell{journal};
  SlowQuestions questions{journal};
  FakeBrowser browser{journal};
  std::unique_ptr<frmMain> main;
};

}  // namespace

constexpr const char* kLocked[] = {"MenuTavrollo", "MenuWebAdmin", "MenuExplorer", "MenuWin",
                                   "MenuSynchro"};

TEST_F(frmMainTest, ALeftoverCommandIsNotRunAndANewOneIsRunOnce) {
  start();
  give("notepad_|_/nouveau_|_");
  ASSERT_TRUE(comes("start notepad /nouveau"));
  give("notepad_|_/nouveau_|_");
  give("notepad_|_/dernier_|_");
  ASSERT_TRUE(comes("start notepad /dernier"));
  EXPECT_EQ(journal, Journal({"start notepad /nouveau", "start notepad /dernier"}));
}

TEST_F(frmMainTest, TheFirstSearchComesThreeSecondsAfterTheStartAndOnce) {
  main = std::make_unique<frmMain>(companion, shell, questions, browser);
  ASSERT_TRUE(main->Form_Load(true));
  EXPECT_TRUE(timer("TimerFirstSearch").isActive());
  EXPECT_EQ(timer("TimerFirstSearch").interval(), 3000);
  EXPECT_TRUE(timer("TimerFirstSearch").isSingleShot());
  EXPECT_FALSE(watching());
}

TEST_F(frmMainTest, ACommandGivenBeforeTheFirstSearchIsNotRun) {
  main = std::make_unique<frmMain>(companion, shell, questions, browser);
  ASSERT_TRUE(main->Form_Load(true));
  give("notepad_|_/trop tot_|_");
  timer("TimerFirstSearch").start(20);
  QSignalSpy ticks(&timer("TimerCookies"), &QTimer::timeout);
  ASSERT_TRUE(waitUntil([&] { return ticks.count() >= 3; }));
  give("notepad_|_/nouveau_|_");
  ASSERT_TRUE(comes("start notepad /nouveau"));
  EXPECT_FALSE(happened("start notepad /trop tot"));
}

TEST_F(frmMainTest, TheStartLeavesTheNoticeWaitingAndTheMenuWithItsBitmaps) {
  start();
  QWidget* notice = window("frmInfos");
  ASSERT_TRUE(notice);
  EXPECT_GT(notice->y(), notice->screen()->geometry().bottom());
  EXPECT_FALSE(entry("MenuQuit").icon().isNull());
  EXPECT_FALSE(entry("MenuRegEdit").icon().isNull());
  EXPECT_FALSE(std::filesystem::exists(folder.path("LastDateCheckUpdate.txt")))
      << "nobody looks for an update at the start";
}

TEST_F(frmMainTest, WatchesAtTheIntervalOfTheSettings) {
  start();
  EXPECT_EQ(timer("TimerCookies").interval(), 20);
}

TEST_F(frmMainTest, AHandledValueIsToldToThePages) {
  start();
  give("shellexe_|_/a_|_n\xC3\xB0"
       "1");
  ASSERT_TRUE(comes("execute /a"));
  const std::string file = folder.path("nav/res_css/js/etat.js");
  ASSERT_TRUE(waitUntil([&] { return std::filesystem::exists(file); }));
  const std::string state = folder.read("nav/res_css/js/etat.js");
  EXPECT_EQ(state.rfind("var tavrolloEtat={\"compteur\":1,\"dernier\":\"n\\u00f01\","
                        "\"intervalle\":20,\"version\":\"",
                        0),
            0u)
      << state;
}

TEST_F(frmMainTest, TheNoticeShowsTheMessage) {
  start();
  give("shellexe_|_/a_|_");
  ASSERT_TRUE(comes("execute /a"));
  const auto shown = [] {
    for (QWidget* window : QApplication::topLevelWidgets()) {
      const auto* label = window->findChild<QLabel*>(QStringLiteral("lblInfos"));
      if (label && label->text() == QStringLiteral("Lancement depuis l'extension")) return true;
    }
    return false;
  };
  EXPECT_TRUE(waitUntil(shown));
}

TEST_F(frmMainTest, AShortcutIsWrittenAtOnce) {
  start();
  give("createlink_|_lnkweb://\xC3\xA9_|_Caf\xC3\xA9_|_1");
  ASSERT_TRUE(waitUntil([this] { return companion.shortcuts.freeId() == 43; }));
  const std::string table = folder.read("nav/res_css/js/shortQrCode.js");
  EXPECT_NE(table.find("var FreeId=43\r\n"), std::string::npos);
  EXPECT_NE(table.find("tabObj[\"000000042\"]=\"Caf\xC3\xA9_|_web://\xE9\";\r\n"),
            std::string::npos);
}

TEST_F(frmMainTest, TheMenuStartsLockedAndFollowsThePages) {
  start();
  for (const char* name : kLocked) EXPECT_FALSE(entry(name).isEnabled()) << name;
  give("lzck_|_false_|_1");
  ASSERT_TRUE(waitUntil([this] { return entry("MenuSynchro").isEnabled(); }));
  for (const char* name : kLocked) EXPECT_TRUE(entry(name).isEnabled()) << name;
  give("lzck_|_FALSE_|_2");
  ASSERT_TRUE(waitUntil([this] { return !entry("MenuSynchro").isEnabled(); }));
  for (const char* name : kLocked) EXPECT_FALSE(entry(name).isEnabled()) << name;
}

TEST_F(frmMainTest, IniStoresThePageKeyAndUnlocks) {
  start();
  give("ini_|_cl\xC3\xA9_|_1");
  ASSERT_TRUE(waitUntil([this] { return entry("MenuWin").isEnabled(); }));
  EXPECT_EQ(folder.read("nav/res_css/js/rwCookies.js"), "var ps=\"cl\xE9\";\r\nreste\r\n");
}

// --- The settings -------------------------------------------------------------------------------

TEST_F(frmMainTest, WhileTheSettingsAreOpenNothingIsWatched) {
  start();
  entry("MenuParam").trigger();
  QWidget* options = window("frmOptions");
  ASSERT_TRUE(options);
  EXPECT_FALSE(options->isModal());
  EXPECT_FALSE(watching());
  EXPECT_FALSE(timer("TimerFirstSearch").isActive());
  give("notepad_|_/pendant_|_");

  control<QAbstractButton>(*options, "cmdClose").click();
  EXPECT_FALSE(options->isVisible());
  EXPECT_TRUE(timer("TimerFirstSearch").isActive());
  timer("TimerFirstSearch").start(20);
  ASSERT_TRUE(waitUntil([this] { return watching(); }));
  give("notepad_|_/apres_|_");
  EXPECT_TRUE(comes("start notepad /apres"));
  EXPECT_FALSE(happened("start notepad /pendant"));
}

TEST_F(frmMainTest, SettingsOpenedInTheMidstOfATickKeepTheWatchingOff) {
  start();
  // The box that a command shows lets the user open the settings, and then the tick ends.
  std::filesystem::remove(folder.path("nav/res_css/js/rwCookies.js"));
  questions.answers = {Answer::Ok};
  questions.whileOpen = [this] { return entry("MenuParam").trigger(), true; };
  give("ini_|_clé_|_");
  ASSERT_TRUE(waitUntil([] { return window("frmOptions") != nullptr; }));
  EXPECT_FALSE(watching());

  main->enableTimerFirstSearch();
  EXPECT_FALSE(timer("TimerFirstSearch").isActive());

  control<QAbstractButton>(*window("frmOptions"), "cmdClose").click();
  EXPECT_TRUE(timer("TimerFirstSearch").isActive());
}

TEST_F(frmMainTest, SettingsThatAreOpenAreNotOpenedAgain) {
  start();
  entry("MenuParam").trigger();
  auto& path = control<QLineEdit>(*window("frmOptions"), "txtPathCookies");
  path.setText(QStringLiteral("/en cours"));
  entry("MenuParam").trigger();
  EXPECT_EQ(path.text(), QStringLiteral("/en cours")) << "an edit is not lost";
  const auto widgets = QApplication::topLevelWidgets();
  EXPECT_EQ(std::count_if(widgets.begin(), widgets.end(),
                          [](const QWidget* widget) {
                            return widget->objectName() == QLatin1String("frmOptions");
                          }),
            1);
}

TEST_F(frmMainTest, ApplyingWhileItWatchesStopsUntilTheFirstSearch) {
  start();
  main->enableTimerFirstSearch();
  EXPECT_FALSE(watching());
  EXPECT_TRUE(timer("TimerFirstSearch").isActive());
}

TEST_F(frmMainTest, TheSettingsWindowStopsAFirstSearchThatIsPending) {
  main = std::make_unique<frmMain>(companion, shell, questions, browser);
  ASSERT_TRUE(main->Form_Load(true));
  ASSERT_TRUE(timer("TimerFirstSearch").isActive());
  entry("MenuParam").trigger();
  EXPECT_FALSE(timer("TimerFirstSearch").isActive());
}

TEST_F(frmMainTest, AppliedSettingsHoldAtOnce) {
  start();
  entry("MenuParam").trigger();
  QWidget& options = *window("frmOptions");
  control<QLineEdit>(options, "txtTempo").setText(QStringLiteral("700"));
  control<QAbstractButton>(options, "optNav_1").click();
  control<QAbstractButton>(options, "cmdOk").click();
  EXPECT_EQ(timer("TimerCookies").interval(), 700);
  EXPECT_FALSE(watching()) << "the window is still open";
  EXPECT_EQ(companion.settings.browser, 1);
  EXPECT_EQ(folder.read("config.cfg"), configBytes(companion.settings, frenchLocale()));
}

TEST_F(frmMainTest, CancellingTheSettingsStartsAnewFromTheFile) {
  start();
  const std::string before = folder.read("config.cfg");
  entry("MenuParam").trigger();
  QWidget& options = *window("frmOptions");
  control<QAbstractButton>(options, "optNav_1").click();
  control<QLineEdit>(options, "txtPathCookies").setText(QStringLiteral("/nulle/part"));
  control<QAbstractButton>(options, "cmdCancel").click();
  EXPECT_EQ(companion.settings.browser, 0);
  EXPECT_TRUE(control<QAbstractButton>(options, "optNav_0").isChecked());
  EXPECT_EQ(fromQt(control<QLineEdit>(options, "txtPathCookies").text()),
            folder.text("cookies.sqlite"));
  EXPECT_EQ(folder.read("config.cfg"), before);
  EXPECT_TRUE(timer("TimerFirstSearch").isActive());
}

TEST_F(frmMainTest, AMissingStoreLeadsIntoTheSettings) {
  std::filesystem::remove(folder.path("cookies.sqlite"));
  questions.answers = {Answer::Yes};
  main = std::make_unique<frmMain>(companion, shell, questions, browser);
  ASSERT_TRUE(main->Form_Load(true));
  QWidget* options = window("frmOptions");
  ASSERT_TRUE(options);
  EXPECT_FALSE(timer("TimerFirstSearch").isActive());
  EXPECT_TRUE(shell.requests.empty()) << "no start page";

  folder.write("autre.sqlite", store("notepad_|_/ancien_|_"));
  control<QLineEdit>(*options, "txtPathCookies").setText(toQt(folder.text("autre.sqlite")));
  control<QAbstractButton>(*options, "cmdClose").click();
  EXPECT_TRUE(timer("TimerFirstSearch").isActive());
}

TEST_F(frmMainTest, UnreadableSettingsLeadThroughTheSearchToTheFirstCookiesPage) {
  folder.write("config.cfg", "du bruit");
  folder.write("home/.mozilla/firefox/p/cookies.sqlite", "x");
  folder.write("home/.mozilla/firefox/profiles.ini", "[Profile0]\nPath=p\nIsRelative=1\n");
  liveInTheFolder();
  questions.answers = {Answer::Yes};
  main = std::make_unique<frmMain>(companion, shell, questions, browser);
  ASSERT_TRUE(main->Form_Load(true));

  const Text found = folder.text("home/.mozilla/firefox/p/cookies.sqlite");
  EXPECT_EQ(companion.settings.cookiesPath, found);
  EXPECT_EQ(folder.read("config.cfg"), configBytes(companion.settings, frenchLocale()));
  ASSERT_EQ(shell.requests.size(), 1u);
  EXPECT_EQ(shell.requests[0].operation, u"open");
  EXPECT_EQ(shell.requests[0].file, nativePath(folder.text("nav/res_css/htm/init_cookie.html")));
  EXPECT_EQ(shell.requests[0].directory, startInFolder(currentFolder(), nativeSeparator()));
  EXPECT_EQ(shell.requests[0].show, ShowState::Normal);
  EXPECT_TRUE(timer("TimerFirstSearch").isActive());
  EXPECT_TRUE(companion.shortcuts.wasLoaded());
  QWidget* search = window("frmRecursiveSearch");
  ASSERT_TRUE(search);
  control<QAbstractButton>(*search, "cmdClose").click();
  EXPECT_FALSE(search->isVisible());
  EXPECT_TRUE(waitUntil([] { return window("frmSplash") != nullptr; }));
}

TEST_F(frmMainTest, QuitCanBeChosenWhileTheSearchRuns) {
  folder.write("config.cfg", "");
  for (int i = 0; i < 20; ++i) folder.makeFolders("home/" + std::to_string(i));
  liveInTheFolder();
  questions.answers = {Answer::Yes, Answer::No, Answer::Ok};
  main = std::make_unique<frmMain>(companion, shell, questions, browser);
  QTimer quit;
  QObject::connect(&quit, &QTimer::timeout, [&] {
    if (!window("frmRecursiveSearch")) return;
    quit.stop();
    entry("MenuQuit").trigger();
  });
  quit.start(0);
  ASSERT_TRUE(main->Form_Load(true));
  EXPECT_EQ(questions.boxes,
            std::vector<Box>({configUnreadableBox(), quitBox(), noCookieStoreBox()}));
}

TEST_F(frmMainTest, AStoreThatVanishedBehindTheSearchLeadsIntoTheSettings) {
  folder.write("config.cfg", "du bruit");
  const std::string first = folder.write("home/.mozilla/firefox/a/cookies.sqlite", "x");
  folder.write("home/.mozilla/firefox/b/cookies.sqlite", "x");
  liveInTheFolder();
  questions.answers = {Answer::Yes, Answer::Ok};
  main = std::make_unique<frmMain>(companion, shell, questions, browser);
  ASSERT_TRUE(main->Form_Load(true));
  std::filesystem::remove(first);
  questions.answers = {Answer::Yes, Answer::Yes};
  QTest::keyClick(&control<QWidget>(*window("frmRecursiveSearch"), "listResult"), Qt::Key_Home);
  QTest::keyClick(&control<QWidget>(*window("frmRecursiveSearch"), "listResult"), Qt::Key_Return);
  EXPECT_EQ(questions.boxes.back(), cookieStoreRejectedBox());
  QWidget* options = window("frmOptions");
  ASSERT_TRUE(options) << "where the path can be changed";
  EXPECT_EQ(control<QLineEdit>(*options, "txtPathCookies").text().toStdString(), first);
  EXPECT_FALSE(timer("TimerFirstSearch").isActive());
  EXPECT_EQ(folder.read("config.cfg"), "du bruit");
}

TEST_F(frmMainTest, ASearchWithoutResultLeavesAnEmptyPathAndNothingWatched) {
  folder.write("config.cfg", "");
  folder.makeFolders("home");
  liveInTheFolder();
  questions.answers = {Answer::Yes, Answer::Ok};
  main = std::make_unique<frmMain>(companion, shell, questions, browser);
  ASSERT_TRUE(main->Form_Load(true));
  EXPECT_EQ(questions.boxes.back(), noCookieStoreBox());
  EXPECT_EQ(companion.settings.cookiesPath, u"");
  EXPECT_FALSE(timer("TimerFirstSearch").isActive());
  EXPECT_TRUE(shell.requests.empty());
}

TEST_F(frmMainTest, TheBarcodeWindowIsOneAndBesideTheWatching) {
  start();
  give("lzck_|_false_|_1");
  ASSERT_TRUE(waitUntil([this] { return entry("MenuTavrollo").isEnabled(); }));
  entry("menuCodeBarre").trigger();
  QWidget* barcodes = window("frmCodeBarrePrev");
  ASSERT_TRUE(barcodes);
  EXPECT_FALSE(barcodes->isModal());
  EXPECT_TRUE(watching());
  control<QLineEdit>(*barcodes, "txtSource").setText(QStringLiteral("12"));
  barcodes->close();
  entry("menuCodeBarre").trigger();
  EXPECT_EQ(window("frmCodeBarrePrev"), barcodes);
  EXPECT_EQ(control<QLineEdit>(*barcodes, "txtSource").text(), QStringLiteral("12"));

  Q_EMIT control<QLabel>(*barcodes, "LabLicence").linkActivated({});
  EXPECT_EQ(shell.requests.back().file, nativePath(folder.text("nav/aide.html")));
}

// --- The lock, boxes, the trace -----------------------------------------------------------------

TEST_F(frmMainTest, CommandsAreCarriedOutWhileABoxIsOpen) {
  start();
  std::filesystem::remove(folder.path("nav/res_css/js/rwCookies.js"));
  questions.answers = {Answer::No};
  questions.whileOpen = [this] { return comes("start notepad /derriere"); };
  QTimer::singleShot(0, [this] { entry("MenuQuit").trigger(); });
  ASSERT_TRUE(comes("ask Tavrollo"));
  give("notepad_|_/derriere_|_");
  EXPECT_TRUE(comes("start notepad /derriere"));
}

TEST_F(frmMainTest, QuitAsksAndOnlyNoKeepsTheProgram) {
  start();
  questions.answers = {Answer::No};
  entry("MenuQuit").trigger();
  EXPECT_EQ(questions.boxes.back(), quitBox());
  EXPECT_TRUE(watching());
}

TEST_F(frmMainTest, QuitWithYesSavesTheOffsetAndEndsTheProgramAtOnce) {
  start();
  std::filesystem::remove(folder.path("offsetCookie.dat"));
  questions.answers = {Answer::Yes};
  EXPECT_EXIT(entry("MenuQuit").trigger(), testing::ExitedWithCode(0), "");
  EXPECT_EQ(folder.read("offsetCookie.dat"), "5\r\n");
  questions.answers = {Answer::Cancel};  // whatever is not No
  EXPECT_EXIT(entry("MenuQuit").trigger(), testing::ExitedWithCode(0), "");
}

TEST_F(frmMainTest, TheSettingsStopTheWatching) {
  start();
  main->MenuParam_Click();
  EXPECT_FALSE(watching());
}

TEST_F(frmMainTest, TheDebugMonitorOpensOnceAndShowsTheTraceOfTheWholeRun) {
  start();
  give("notepad_|_/a_|_");
  ASSERT_TRUE(comes("start notepad /a"));
  entry("menuDebug").trigger();
  QWidget* monitor = window("frmDebug");
  ASSERT_TRUE(monitor);
  EXPECT_FALSE(monitor->isModal());
  EXPECT_TRUE(watching());
  entry("menuDebug").trigger();
  control<QAbstractButton>(*monitor, "cmdClose").click();
  EXPECT_EQ(window("frmDebug"), nullptr);
  entry("menuDebug").trigger();
  EXPECT_EQ(window("frmDebug"), monitor) << "closed, it is only hidden";
  int monitors = 0;
  for (QWidget* window : QApplication::topLevelWidgets()) {
    if (window->objectName() != QStringLiteral("frmDebug")) continue;
    ++monitors;
    EXPECT_TRUE(window->isVisible());
  }
  EXPECT_EQ(monitors, 1);
}

TEST_F(frmMainTest, TheDebugMonitorOpensTheTestWindowAndTheFileAboutTheCookies) {
  start();
  entry("menuDebug").trigger();
  QWidget& monitor = *window("frmDebug");
  control<QAbstractButton>(monitor, "cmdInfos").click();
  EXPECT_EQ(journal, Journal({"start notepad " + folder.path("infos_qrCode_cookies.txt")}));

  control<QAbstractButton>(monitor, "cmdTest").click();
  QWidget* test = window("frmTest");
  ASSERT_TRUE(test);
  EXPECT_FALSE(test->isModal());
  EXPECT_TRUE(watching());
  control<QAbstractButton>(monitor, "cmdTest").click();
  EXPECT_EQ(window("frmTest"), test) << "shown again, not opened twice";
}

TEST_F(frmMainTest, TheTestWindowListsTheTableAsItIsWhenItIsOpened) {
  start();
  const auto write = [this](const std::string& entries) {
    folder.write("nav/res_css/js/shortQrCode.js",
                 "var FreeId=42\r\nvar tabObj = new Object();\r\n" + entries + "function\r\n");
  };
  const std::string entry3 = "tabObj[\"000000003\"]=\"Plan_|_/plan.pdf\";\r\n";
  const std::string entry4 = "tabObj[\"000000004\"]=\"Site_|_webwww.example.org\";\r\n";
  write(entry3);
  entry("menuDebug").trigger();
  auto& cmdTest = control<QAbstractButton>(*window("frmDebug"), "cmdTest");
  cmdTest.click();
  QWidget* test = window("frmTest");
  ASSERT_TRUE(test);
  auto* grid = &control<QTableWidget>(*test, "Grid");
  ASSERT_EQ(grid->rowCount(), 1);
  EXPECT_EQ(grid->item(0, 1)->text(), QStringLiteral("Plan"));

  write(entry3 + entry4);
  cmdTest.click();
  EXPECT_EQ(grid->rowCount(), 1) << "it was open all the time";
  test->close();
  cmdTest.click();
  test = window("frmTest");
  ASSERT_TRUE(test);
  grid = &control<QTableWidget>(*test, "Grid");
  ASSERT_EQ(grid->rowCount(), 2);
  EXPECT_EQ(grid->item(1, 2)->text(), QStringLiteral("webwww.example.org"));
}

TEST_F(frmMainTest, TheUpdaterIsStartedForThisProgramAndToday) {
  start();
  questions.answers = {Answer::Yes};
  const std::string before = lastCheckBytes(std::time(nullptr));
  entry("MenuMAJ").trigger();
  const std::string after = lastCheckBytes(std::time(nullptr));
  EXPECT_EQ(questions.boxes.back(), updateBox());
  const std::string noted = folder.read("LastDateCheckUpdate.txt");
  EXPECT_TRUE(noted == before || noted == after) << noted;  // a test may run at midnight

  ASSERT_FALSE(shell.requests.empty());
  const ShellRequest& request = shell.requests.back();
  EXPECT_EQ(request.file, folderOf(executablePath()) + nativePath(u"\\updater"));
  EXPECT_EQ(request.parameters, u"setup_Tavrollo\t" + numberText(std::int64_t{kVersionRevision}) +
                                    u"\tTavrollo\t" + nameOf(executablePath()));
}

TEST_F(frmMainTest, TheUpdatePageIsOpenedOnNo) {
  start();
  questions.answers = {Answer::No};
  entry("MenuMAJ").trigger();
  ASSERT_FALSE(shell.requests.empty());
  EXPECT_EQ(shell.requests.back().file, addresses::kUpdatePage);
  EXPECT_FALSE(std::filesystem::exists(folder.path("LastDateCheckUpdate.txt")));
}

TEST_F(frmMainTest, TheAuthorAndTheSystemsVersionAreToldInBoxes) {
  start();
  main->lockMenus(false);
  questions.answers = {Answer::Ok, Answer::Ok};
  entry("menuContact").trigger();
  EXPECT_EQ(questions.boxes.back(), contactBox());

  shell.kinds[u"winver"] = CommandKind::Box;
  entry("MenuWinVer").trigger();
  EXPECT_EQ(questions.boxes.back(), systemVersionBox(*describeSystem()));
}

TEST_F(frmMainTest, AboutShowsTheSplash) {
  start();
  ASSERT_TRUE(waitUntil([&] { return !window("frmSplash"); }, 10000));
  entry("MenuAbout").trigger();
  ASSERT_TRUE(waitUntil([&] { return window("frmSplash") != nullptr; }));

  const std::optional<FileStamp> program = fileStamp(executablePath());
  ASSERT_TRUE(program);
  const auto written = static_cast<std::time_t>(program->modified / 1'000'000'000);
  EXPECT_EQ(control<QLabel>(*window("frmSplash"), "lblVersion").text(),
            QStringLiteral("V") + QLatin1String(kVersionText));
  EXPECT_EQ(control<QLabel>(*window("frmSplash"), "lblYear").text(),
            toQt(revisionDateText(written, frenchLocale())));
}

TEST_F(frmMainTest, TheMenuOpensThePages) {
  start();
  entry("menuWebUser").trigger();
  entry("menuAide").trigger();
  main->lockMenus(false);
  entry("MenuWebAdmin").trigger();
  EXPECT_EQ(journal, Journal({"execute " + folder.path("nav/eleve.html"),
                              "execute " + folder.path("nav/aide.html"),
                              "execute " + folder.path("nav/index.html")}));
}

TEST_F(frmMainTest, CancellingTheQuestionBeforeSynchronisingKeepsWatching) {
  start();
  main->lockMenus(false);
  questions.answers = {Answer::Cancel};
  entry("MenuSynchro").trigger();
  EXPECT_EQ(questions.boxes.back(), insertDriveBox());
  EXPECT_EQ(window("frmSynchro"), nullptr);
  EXPECT_TRUE(watching());
}

TEST_F(frmMainTest, NothingIsWatchedWhileTheSynchronisationsWindowIsOpen) {
  folder.makeFolders("stick");
  start();
  companion.settings.backupPath = folder.text("stick");
  main->lockMenus(false);
  questions.answers = {Answer::Ok};
  entry("MenuSynchro").trigger();
  QWidget* synchro = window("frmSynchro");
  ASSERT_TRUE(synchro);
  EXPECT_EQ(synchro->windowModality(), Qt::NonModal);
  EXPECT_FALSE(watching());
  EXPECT_FALSE(timer("TimerFirstSearch").isActive());

  entry("MenuSynchro").trigger();  // it is the same window, without another question
  EXPECT_EQ(window("frmSynchro"), synchro);
  EXPECT_EQ(questions.boxes.size(), 1u);

  // The settings' window is not what ends the waiting.
  main->enableTimerFirstSearch();
  main->enableTimerCookies(true);
  EXPECT_FALSE(watching());
  EXPECT_FALSE(timer("TimerFirstSearch").isActive());

  give("notepad_|_/pendant_|_");
  control<QAbstractButton>(*synchro, "cmdClose").click();
  EXPECT_EQ(window("frmSynchro"), nullptr);
  EXPECT_TRUE(timer("TimerFirstSearch").isActive());
  timer("TimerFirstSearch").start(20);
  ASSERT_TRUE(waitUntil([this] { return watching(); }));
  give("notepad_|_/apres_|_");
  ASSERT_TRUE(comes("start notepad /apres"));
  EXPECT_FALSE(happened("start notepad /pendant"));

  questions.answers = {Answer::Ok};  // another time, from the start
  entry("MenuSynchro").trigger();
  EXPECT_TRUE(window("frmSynchro"));
  EXPECT_FALSE(watching());
}

TEST_F(frmMainTest, ARestoredShortcutTableIsTheProgramsTable) {
  compareWithBackupOf("var FreeId=77\r\nvar tabObj = new Object();\r\n"
                      "tabObj[\"000000076\"]=\"Du stick_|_webhttps://exemple/\";\r\n"
                      "function ShortQrCode(myKey){\r\n");
  ASSERT_TRUE(window("frmSynchro"));
  EXPECT_EQ(companion.shortcuts.freeId(), 42);
  control<QAbstractButton>(*window("frmSynchro"), "cmdSynchro").click();
  EXPECT_EQ(companion.shortcuts.freeId(), 77);

  // The next shortcut comes behind those that were restored, and takes none of them away.
  control<QAbstractButton>(*window("frmSynchro"), "cmdClose").click();
  timer("TimerFirstSearch").start(20);
  ASSERT_TRUE(waitUntil([this] { return watching(); }));
  give("createlink_|_lnkweb://nouveau_|_Nouveau_|_1");
  ASSERT_TRUE(waitUntil([this] { return companion.shortcuts.freeId() == 78; }));
  const std::string saved = folder.read("nav/res_css/js/shortQrCode.js");
  EXPECT_NE(saved.find("\"000000076\"]=\"Du stick_|_webhttps://exemple/\""), std::string::npos);
  EXPECT_NE(saved.find("\"000000077\"]=\"Nouveau_|_web://nouveau\""), std::string::npos) << saved;
}

TEST_F(frmMainTest, EveryEntryOfTheMenuHasItsCommand) {
  start();
  main->lockMenus(false);
  for (const MenuEntry& each : menuEntries()) {
    // The entry without a caption is not shown.
    if (each.kind != MenuEntryKind::Command || each.caption.empty()) continue;
    EXPECT_TRUE(entry(toUtf8(each.name).c_str()).isEnabled()) << toUtf8(each.name);
  }
}

TEST_F(frmMainTest, TheMenuStartsPrograms) {
  start();
  main->lockMenus(false);
  questions.answers = {Answer::Yes, Answer::Ok};
  for (const char* name : {"MenuNotePad", "MenuMSword", "MenuExcel", "MenuRegEdit"}) {
    entry(name).trigger();
  }
  shell.failure = {53, u"Fichier introuvable : charmap"};
  entry("MenuChar").trigger();
  EXPECT_EQ(journal,
            Journal({"start notepad", "word " + folder.path("modeles_word_excel/modele_defaut.doc"),
                     "execute " + folder.path("modeles_word_excel/modele_defaut.xls"),
                     "ask Tavrolo : Accès à la base de registre système", "start regedit",
                     "start charmap", "ask Tavrollo"}));
  EXPECT_EQ(questions.boxes.back(), errorBox(u"MenuChar_Click", u"Fichier introuvable : charmap"));
}

// The whole way, from the entry to a program that runs.
TEST_F(frmMainTest, AnEntryStartsWhatIsInstalledAndThenWhatTheUserPutInItsPlace) {
  const auto recorder = [this](const std::string& name) {
    folder.script("bin/" + name,
                  "echo \"" + name + " $*\" > \"$0.part\"\nmv \"$0.part\" \"$0.done\"\n");
  };
  const auto ran = [this](const std::string& name) {
    const std::string done = folder.path("bin/" + name + ".done");
    return waitUntil([&] { return std::filesystem::exists(done); })
               ? folder.read("bin/" + name + ".done")
               : std::string("nothing");
  };
  recorder("gnome-characters");
  recorder("kcharselect");
  recorder("mine");
  const QByteArray path = qgetenv("PATH");
  qputenv("PATH", QByteArray::fromStdString(folder.path("bin") + ":/usr/bin:/bin"));
  const std::unique_ptr<Shell> real = makeShell([](const Text&) {});
  LauncherShell launchers(companion.programFolder, *real, [](const Text&) {});
  main = std::make_unique<frmMain>(companion, launchers, questions, browser);

  entry("MenuChar").trigger();
  EXPECT_EQ(ran("gnome-characters"), "gnome-characters \n");
  folder.write("lanceurs.cfg", "charmap=mine 'a b' c\n");
  entry("MenuChar").trigger();
  EXPECT_EQ(ran("mine"), "mine a b c\n");
  EXPECT_FALSE(std::filesystem::exists(folder.path("bin/kcharselect.done")));

  questions.answers = {Answer::Ok};
  entry("MenuWinVer").trigger();
  EXPECT_EQ(questions.boxes.back(), systemVersionBox(*describeSystem()));
  folder.write("lanceurs.cfg", "winver=mine -v\n");
  std::filesystem::remove(folder.path("bin/mine.done"));
  entry("MenuWinVer").trigger();
  EXPECT_EQ(ran("mine"), "mine -v\n");
  qputenv("PATH", path);
}

TEST_F(frmMainTest, TheOpenMenuFollowsThePages) {
  start();
  ASSERT_TRUE(waitUntil([] { return window("frmSplash") != nullptr; }));
  QTest::mouseClick(window("frmSplash"), Qt::LeftButton);
  ASSERT_TRUE(waitUntil([] { return window("frmSplash") == nullptr; }));
  auto* menu = qobject_cast<QMenu*>(entry("MenuQuit").parent());
  ASSERT_TRUE(menu);
  menu->popup({100, 100});
  ASSERT_TRUE(waitUntil([&] { return menu->isVisible(); }));
  EXPECT_FALSE(entry("MenuWin").isEnabled());
  give("ini_|_cle_|_1");
  ASSERT_TRUE(waitUntil([this] { return entry("MenuWin").isEnabled(); }));
  EXPECT_TRUE(menu->isVisible());

  QMenu* inner = entry("MenuWin").menu();
  QTest::keyClick(menu, Qt::Key_Down);
  QTest::keyClick(menu, Qt::Key_Right);
  ASSERT_TRUE(waitUntil([&] { return inner->isVisible(); })) << "reached by the keyboard";
  give("lzck_|_true_|_2");
  ASSERT_TRUE(waitUntil([this] { return !entry("MenuWin").isEnabled(); }));
  EXPECT_FALSE(inner->isVisible());
  for (const char* name : kLocked) EXPECT_FALSE(entry(name).isEnabled()) << name;
  menu->close();
}

TEST_F(frmMainTest, AFailureInATickIsTracedAndTheNextCommandIsRun) {
  start();
  shell.throws = "panne";
  give("shellexe_|_/a_|_");
  ASSERT_TRUE(
      waitUntil([this] { return companion.trace.text().find(u"\r\nerreur panne") != Text::npos; }));
  shell.throws.clear();
  give("notepad_|_/b_|_");
  EXPECT_TRUE(comes("start notepad /b"));
}

TEST_F(frmMainTest, TheWindowsLiveWhileALongStoreIsSearched) {
  start();
  int turns = 0;
  QTimer other;  // of any window
  QObject::connect(&other, &QTimer::timeout, [&] { turns += watching() ? 0 : 1; });
  other.start(0);
  folder.write("cookies.sqlite", std::string(std::size_t{4} << 20, 'x'));
  EXPECT_TRUE(waitUntil([&] { return turns > 1; }));
}

TEST_F(frmMainTest, NoToUnreadableSettingsEndsTheProgramAtTheStart) {
  folder.write("config.cfg", "du bruit");
  questions.answers = {Answer::No};
  main = std::make_unique<frmMain>(companion, shell, questions, browser);
  EXPECT_FALSE(main->Form_Load(true));
}

TEST_F(frmMainTest, NoToUnreadableSettingsEndsTheProgramBehindTheOptionsToo) {
  endInAProcessOfItsOwn();
  start();
  entry("MenuParam").trigger();
  std::filesystem::remove(folder.path("config.cfg"));
  questions.answers = {Answer::No};
  QWidget& options = *window("frmOptions");
  EXPECT_EXIT(control<QAbstractButton>(options, "cmdCancel").click(), testing::ExitedWithCode(0),
              "");
}

TEST_F(frmMainTest, RefusingANewTableEndsTheProgramBehindTheSearchToo) {
  endInAProcessOfItsOwn();
  folder.write("config.cfg", "du bruit");
  folder.write("home/.mozilla/firefox/a/cookies.sqlite", "x");
  std::filesystem::remove(folder.path("nav/res_css/js/shortQrCode.js"));
  liveInTheFolder();
  questions.answers = {Answer::Yes, Answer::Ok, Answer::No, Answer::Ok};
  main = std::make_unique<frmMain>(companion, shell, questions, browser);
  EXPECT_EXIT(main->Form_Load(true), testing::ExitedWithCode(0), "");
}

TEST_F(frmMainTest, RefusingANewTableEndsTheProgramBehindARestoreToo) {
  endInAProcessOfItsOwn();
  compareWithBackupOf("du bruit");
  ASSERT_TRUE(window("frmSynchro"));
  questions.answers = {Answer::No, Answer::Ok};
  EXPECT_EXIT(control<QAbstractButton>(*window("frmSynchro"), "cmdSynchro").click(),
              testing::ExitedWithCode(0), "");
}

TEST_F(frmMainTest, AFailureInAHandlerBecomesABox) {
  start();
  questions.answers = {Answer::Ok};
  shell.throws = "panne";
  entry("menuAide").trigger();
  EXPECT_EQ(questions.boxes.back(), errorBox(u"menuAide_Click", u"panne"));
}

// The last cases: from then on the toolkit knows a tray.
TEST_F(frmMainTest, ATrayThatComesLateGetsTheIconAndTheWindowGoes) {
  start();
  ASSERT_TRUE(waitUntil([] { return window("MenuWindow") != nullptr; }, 10000));
  EXPECT_EQ(questions.missingTrays, 1);
  const Trayer trayer;
  ASSERT_TRUE(waitUntil(trayManagerStands));
  ASSERT_TRUE(waitUntil([] { return window("MenuWindow") == nullptr; }, 10000));

  auto* icon = main->findChild<QSystemTrayIcon*>(QStringLiteral("trayIcon"));
  ASSERT_TRUE(icon);
  EXPECT_TRUE(icon->isVisible());
  EXPECT_EQ(icon->toolTip(), QStringLiteral("Tavrollo V") + QLatin1String(kVersionText));
  EXPECT_FALSE(timer("TimerIcon").isActive());
  give("notepad_|_/a_|_");
  ASSERT_TRUE(comes("start notepad /a"));
  EXPECT_TRUE(timer("TimerIcon").isActive());
  EXPECT_EQ(questions.missingTrays, 1);
}

TEST_F(frmMainTest, QuittingTakesTheIconOutOfTheTray) {
  endInAProcessOfItsOwn();
  // A tray of that process's own would outlive it.
  std::optional<Trayer> trayer;
  if (!trayManagerStands()) trayer.emplace();
  ASSERT_TRUE(waitUntil(trayManagerStands));
  start();
  auto* icon = main->findChild<QSystemTrayIcon*>(QStringLiteral("trayIcon"));
  ASSERT_TRUE(icon);
  ASSERT_TRUE(icon->isVisible());
  questions.answers = {Answer::Yes};
  const auto quit = [&] {
    // Delivered on the program's last steps.
    const auto tell = [icon] { std::fputs(icon->isVisible() ? "it stays" : "it is gone", stderr); };
    QMetaObject::invokeMethod(icon, tell, Qt::QueuedConnection);
    entry("MenuQuit").trigger();
  };
  EXPECT_EXIT(quit(), testing::ExitedWithCode(0), "it is gone");
}
