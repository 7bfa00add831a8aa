// SPDX-License-Identifier: GPL-3.0-or-later
// The options window as its user has it: typed into, clicked, left.
#include <QCheckBox>
#include <QClipboard>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QSignalSpy>
#include <QTabWidget>
#include <QTableView>
#include <QToolButton>
#include <set>

#include "config/ConfigBoxes.h"
#include "config/ConfigFile.h"
#include "config/OptionsBoxes.h"
#include "config/SearchBoxes.h"
#include "config/ShortcutFile.h"
#include "config/ShortcutStore.h"
#include "config/frmOptions.h"
#include "config/modGetOsVersion.h"
#include "config/qt/ShortcutGridModel.h"
#include "platform/Files.h"
#include "platform/qt/Centre.h"
#include "platform/qt/QtText.h"
#include "support/Doubles.h"
#include "support/Scratch.h"
#include "text/Paths.h"
#include "ui/UiMain.h"

namespace {

class Options : public testing::Test {
 protected:
  Options() {
    scratch.write("cookies.sqlite", "x");
    settings.browser = 0;
    settings.cookiesPath = scratch.text("cookies.sqlite");
    settings.pollInterval = 1000;
    settings.shortcutPath = scratch.text("nav/res_css/js/shortQrCode.js");
    settings.scaleX = 567;
    settings.scaleY = 300.5;
    scratch.makeFolders("nav/res_css/js");
    table.load(9, {{u"000000001", u"un", u"web1"},
                   {u"000000004", u"quatre", u"web4"},
                   {u"000000005", u"cinq", u"web5"}});
    table.setSource(settings.shortcutPath);
    window = std::make_unique<frmOptions>(surroundings());
  }

  OptionsSurroundings surroundings() {
    return {.settings = settings,
            .shortcuts = table,
            .programFolder = programFolder,
            .locale = locale,
            .shell = shell,
            .questions = questions,
            .setInterval =
                [this](std::int32_t interval) {
                  journal.push_back("interval " + std::to_string(interval));
                },
            .restartWatching = [this] { journal.push_back("restart"); },
            .pumpEvents = [this] { journal.push_back("pump"); },
            .InitVar = [this] { journal.push_back("InitVar"); },
            .MenuAbout_Click = [this] { journal.push_back("about"); },
            .endProgram = [this] { journal.push_back("end"); },
            .checkInstallation = [this] { journal.push_back("check"); },
            .autostart = &autostart};
  }

  void open() {
    ASSERT_TRUE(window->Form_Load());
    window->show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(window.get()));
  }

  QLineEdit& box(const char* name) { return control<QLineEdit>(*window, name); }
  QTableView& grid() { return control<QTableView>(*window, "Grid"); }
  QTabWidget& tabs() { return control<QTabWidget>(*window, "tbsOptions"); }
  Text shown(const char* name) { return fromQt(box(name).text()); }
  Text label(const char* name) { return fromQt(control<QLabel>(*window, name).text()); }

  void click(const char* name) { control<QAbstractButton>(*window, name).click(); }

  // The page that holds the control called `name` comes to the front, and it gets the focus.
  void goTo(const char* name) {
    QWidget& wanted = control<QWidget>(*window, name);
    for (int tab = 0; tab < tabs().count(); ++tab) {
      if (tabs().widget(tab)->isAncestorOf(&wanted)) tabs().setCurrentIndex(tab);
    }
    wanted.setFocus();
  }
  void type(const char* name, const char* text) {
    goTo(name);
    box(name).selectAll();
    QTest::keyClicks(&box(name), QString::fromLatin1(text));
  }
  void paste(const char* name, const char* text) {
    goTo(name);
    box(name).selectAll();
    box(name).insert(QString::fromUtf8(text));
  }
  void selectRow(int row, int column = 0) {
    grid().setCurrentIndex(grid().model()->index(row - 1, column));
  }

  Scratch scratch;
  Text programFolder = scratch.text();
  LocaleData locale = frenchLocale();
  Settings settings;
  ShortcutTable table;
  Journal journal;
  RecordingShell shell{journal};
  ScriptedQuestions questions{journal};
  RecordingAutostart autostart{journal};
  std::unique_ptr<frmOptions> window;
};

}  // namespace

TEST_F(Options, ShowsTheSettings) {
  settings.browser = 1;
  settings.notifications = 0;
  open();
  EXPECT_FALSE(control<QRadioButton>(*window, "optNav_0").isChecked());
  EXPECT_TRUE(control<QRadioButton>(*window, "optNav_1").isChecked());
  EXPECT_EQ(shown("txtPathCookies"), settings.cookiesPath);
  EXPECT_EQ(shown("txtTempo"), u"1000");
  EXPECT_EQ(shown("txtPathJs"), settings.shortcutPath);
  EXPECT_EQ(shown("txtScaleX"), u"567");
  EXPECT_EQ(shown("txtScaleY"), u"300,5");
  EXPECT_EQ(control<QCheckBox>(*window, "chkInfos").checkState(), Qt::Unchecked);
  EXPECT_EQ(label("labWinVersion"), modGetOsVersion());
  EXPECT_EQ(fromQt(control<QGroupBox>(*window, "frame_1").title()),
            u"QrCodes : 3 Raccourcis créés");

  settings.browser = 0;
  settings.notifications = 1;
  window->showSettings();
  EXPECT_TRUE(control<QRadioButton>(*window, "optNav_0").isChecked());
  EXPECT_EQ(control<QCheckBox>(*window, "chkInfos").checkState(), Qt::Checked);
}

TEST_F(Options, LiesInTheMiddleOfTheScreen) {
  open();
  const QRect screen = window->screen()->availableGeometry();
  const QPoint off = window->frameGeometry().center() - screen.center();
  EXPECT_LT(std::abs(off.x()), 40);
  EXPECT_LT(std::abs(off.y()), 40);
}

TEST(Centre, AWindowLargerThanItsScreenFitsWithItsFrame) {
  QWidget large;
  large.resize(5000, 5000);
  centre(large);
  large.show();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&large));
  const auto inside = [&] {
    return large.frameGeometry() != large.geometry() &&
           large.screen()->availableGeometry().contains(large.frameGeometry());
  };
  EXPECT_TRUE(waitUntil(inside, 1000));
}

TEST_F(Options, FitsAScreenOf640By400WithItsTextsWhole) {
  open();
  goTo("optNav_1");
  const auto shrink = [&] {
    window->resize(1, 1);
    return waitUntil([&] { return window->size() == window->minimumSizeHint(); });
  };
  const int titleBar = window->frameGeometry().height() - window->height();
  for (const char* browser : {"optNav_1", "optNav_0"}) {
    click(browser);
    ASSERT_TRUE(shrink());
    EXPECT_LE(window->width(), 640);
    EXPECT_LE(window->height() + titleBar, 400);
    const auto& chrome = control<QLabel>(*window, "labChrome");
    EXPECT_TRUE(chrome.isHidden() || chrome.height() >= chrome.heightForWidth(chrome.width()));
    const QLineEdit& tempo = box("txtTempo");
    EXPECT_GT(tempo.width(), tempo.fontMetrics().horizontalAdvance(QStringLiteral("5000")) + 12);
  }
}

TEST_F(Options, EachTabShowsItsPageAndHidesTheOthers) {
  open();
  ASSERT_GE(tabs().count(), 2);
  for (int selected = 0; selected < tabs().count(); ++selected) {
    tabs().setCurrentIndex(selected);
    for (int page = 0; page < tabs().count(); ++page) {
      EXPECT_EQ(tabs().widget(page)->isVisible(), page == selected);
    }
  }
  EXPECT_TRUE(tabs().widget(0)->isAncestorOf(&grid())) << "the first page holds the grid";
}

TEST_F(Options, LoadsTheTableThatWasNotReadYet) {
  ShortcutTable unread;
  scratch.write("nav/res_css/js/shortQrCode.js", shortcutBytes(table));
  OptionsSurroundings to = surroundings();
  frmOptions other({settings, unread, programFolder, locale, shell, questions, to.setInterval,
                    to.restartWatching, to.pumpEvents, to.InitVar, to.MenuAbout_Click,
                    to.endProgram});
  EXPECT_TRUE(other.Form_Load());
  EXPECT_EQ(unread.rows(), table.rows());
}

TEST_F(Options, EndsWhereThereIsNoTableAndNoneIsWanted) {
  ShortcutTable unread;
  OptionsSurroundings to = surroundings();
  frmOptions other({settings, unread, programFolder, locale, shell, questions, to.setInterval,
                    to.restartWatching, to.pumpEvents, to.InitVar, to.MenuAbout_Click,
                    to.endProgram});
  questions.answers = {Answer::Ok, Answer::No, Answer::Ok};
  EXPECT_FALSE(other.Form_Load());
}

// --- The session's start ------------------------------------------------------------------------

TEST_F(Options, TheSessionsStartIsChangedByApplyAlone) {
  open();
  QCheckBox& start = control<QCheckBox>(*window, "chkAutostart");
  goTo("chkAutostart");
  EXPECT_FALSE(start.isChecked());
  QTest::keyClick(&start, Qt::Key_Space);
  EXPECT_TRUE(start.isChecked());
  EXPECT_FALSE(autostart.on);
  click("cmdOk");
  EXPECT_TRUE(autostart.on);
  click("cmdOk");
  EXPECT_EQ(std::count(journal.begin(), journal.end(), "autostart on"), 1);
  click("chkAutostart");
  click("cmdClose");
  EXPECT_FALSE(autostart.on);
}

TEST_F(Options, CancelLeavesTheSessionsStartAsItWas) {
  open();
  click("chkAutostart");
  click("cmdCancel");
  EXPECT_FALSE(autostart.on);
  window->show();
  EXPECT_FALSE(control<QCheckBox>(*window, "chkAutostart").isChecked());
}

TEST_F(Options, ShowsWhatTheDesktopsOwnSwitchSays) {
  autostart.on = true;
  open();
  EXPECT_TRUE(control<QCheckBox>(*window, "chkAutostart").isChecked());
  click("cmdClose");
  autostart.on = false;
  window->show();
  EXPECT_FALSE(control<QCheckBox>(*window, "chkAutostart").isChecked());
  click("cmdOk");
  for (const std::string& line : journal) EXPECT_FALSE(line.starts_with("autostart")) << line;
}

TEST_F(Options, SaysSoWhenTheSessionsStartCannotBeChanged) {
  open();
  autostart.failure = {.number = 70, .description = u"Accès refusé"};
  questions.answers = {Answer::Ok};
  click("chkAutostart");
  click("cmdOk");
  ASSERT_EQ(questions.boxes.size(), 1u);
  EXPECT_EQ(questions.boxes[0].title, autostartBox(autostart.failure).title);
  EXPECT_EQ(questions.boxes[0].text, autostartBox(autostart.failure).text);
  EXPECT_FALSE(control<QCheckBox>(*window, "chkAutostart").isChecked());
}

TEST_F(Options, ARejectedCookieStoreLeavesTheSessionsStartAsItWas) {
  open();
  box("txtPathCookies").setText(QStringLiteral("/missing"));
  click("chkAutostart");
  questions.answers = {Answer::Yes};
  click("cmdClose");
  EXPECT_FALSE(autostart.on);
  EXPECT_TRUE(control<QCheckBox>(*window, "chkAutostart").isChecked());
}

TEST_F(Options, TheInstallationIsCheckedByAButton) {
  open();
  goTo("cmdCheck");
  QTest::keyClick(&control<QPushButton>(*window, "cmdCheck"), Qt::Key_Space);
  EXPECT_EQ(std::count(journal.begin(), journal.end(), "check"), 1);
}

TEST_F(Options, WhereNothingChecksTheInstallationThereIsNoButton) {
  OptionsSurroundings to = surroundings();
  to.checkInstallation = nullptr;
  const frmOptions other(to);
  EXPECT_TRUE(control<QGroupBox>(other, "grpCheck").isHidden());
}

TEST_F(Options, WhereASessionStartsNothingItIsNotOffered) {
  OptionsSurroundings to = surroundings();
  to.autostart = nullptr;
  frmOptions other(to);
  ASSERT_TRUE(other.Form_Load());
  EXPECT_TRUE(control<QGroupBox>(other, "grpStart").isHidden());
  control<QAbstractButton>(other, "cmdOk").click();
  EXPECT_TRUE(questions.boxes.empty());
}

// --- The grid -----------------------------------------------------------------------------------

TEST_F(Options, TheGridShowsHeadingsRowsAndWidths) {
  open();
  const QAbstractItemModel& model = *grid().model();
  const TextView headings[] = {u"Index", u"Nom Court", u"QrCode associé"};
  const int widths[] = {66, 266, 3333};
  for (int column = 0; column < 3; ++column) {
    EXPECT_EQ(fromQt(model.headerData(column, Qt::Horizontal).toString()), headings[column]);
    if (column > 0) {
      EXPECT_EQ(grid().columnWidth(column), widths[column]);
    }
  }
  const int digits = grid().fontMetrics().horizontalAdvance(QStringLiteral("000000000"));
  EXPECT_EQ(grid().columnWidth(0), std::max(widths[0], digits + 10)) << "a key is read whole";
  EXPECT_EQ(model.rowCount(), 3);
  EXPECT_EQ(fromQt(model.index(1, 0).data().toString()), u"000000004");
  EXPECT_EQ(fromQt(model.index(1, 1).data().toString()), u"quatre");
  EXPECT_EQ(fromQt(model.index(1, 2).data().toString()), u"web4");
}

TEST_F(Options, SelectingACellShowsItsPlaceAndItsRow) {
  open();
  selectRow(2, 1);
  EXPECT_EQ(label("labXY"), u"L2 - C1");
  EXPECT_EQ(shown("txtIdQrCode"), u"000000004");
  EXPECT_EQ(shown("txtNameQrCode"), u"quatre");
  EXPECT_EQ(shown("txtQrCode"), u"web4");
}

TEST_F(Options, EditingTheBoxesEditsTheSelectedRowAtOnce) {
  open();
  selectRow(3);
  type("txtNameQrCode", "cinq + ");
  goTo("txtNameQrCode");
  QTest::sendKeyEvent(QTest::Click, &box("txtNameQrCode"), Qt::Key_Eacute, QStringLiteral("é"), {});
  type("txtQrCode", "web_|_5");
  EXPECT_EQ(table.rows()[2], (Shortcut{u"000000005", u"cinq + é", u"web_|_5"}));
  EXPECT_EQ(table.rows()[1], (Shortcut{u"000000004", u"quatre", u"web4"}));
  EXPECT_TRUE(box("txtIdQrCode").isReadOnly());
  EXPECT_TRUE(box("txtPathJs").isReadOnly()) << "only its button chooses another file";
}

// The table's file has a line for each shortcut.
TEST_F(Options, WhatIsPastedEndsWithItsFirstLine) {
  open();
  selectRow(3);
  QApplication::clipboard()->setText(QStringLiteral("collé\r\nencore\n"));
  for (const char* name : {"txtNameQrCode", "txtQrCode", "txtPathCookies"}) {
    goTo(name);
    box(name).selectAll();
    QTest::keyClick(&box(name), Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(shown(name), u"collé");
  }
  EXPECT_EQ(table.rows()[2], (Shortcut{u"000000005", u"collé", u"collé"}));
}

TEST_F(Options, WithNoRowSelectedThereIsNothingToEdit) {
  open();
  grid().setCurrentIndex({});
  EXPECT_FALSE(box("txtNameQrCode").isEnabled());
  EXPECT_FALSE(box("txtQrCode").isEnabled());
  EXPECT_EQ(label("labXY"), u"");
}

TEST_F(Options, DeletingTakesTheRowAndShowsTheOneThatFollows) {
  open();
  selectRow(2);
  click("cmdDel");
  EXPECT_EQ(fromQt(control<QGroupBox>(*window, "frame_1").title()),
            u"QrCodes : 2 Raccourcis créés");
  EXPECT_EQ(shown("txtIdQrCode"), u"000000005");
  EXPECT_EQ(label("labXY"), u"L2 - C0");
  EXPECT_EQ(table.freeId(), 9) << "a deleted key is never given again";

  click("cmdDel");  // the last row: the one in front of it is selected now, and protected
  EXPECT_EQ(shown("txtIdQrCode"), u"000000001");
  EXPECT_EQ(fromQt(control<QGroupBox>(*window, "frame_1").title()), u"QrCodes : 1 Raccourci créé");
}

TEST_F(Options, TheFirstRowAndNoRowAreNotDeleted) {
  open();
  questions.answers = {Answer::Ok, Answer::Ok};
  grid().setCurrentIndex({});
  click("cmdDel");
  selectRow(1);
  click("cmdDel");
  EXPECT_EQ(questions.boxes, std::vector<Box>(2, firstRowStaysBox()));
  EXPECT_EQ(table.rows().size(), 3u);
}

TEST_F(Options, AShortcutFromAPageAppearsAtTheEndAndLeavesTheSelection) {
  open();
  selectRow(2);
  table.addRow(u"000000009\tneuf\tweb9");
  EXPECT_EQ(grid().model()->rowCount(), 4);
  EXPECT_EQ(label("labXY"), u"L2 - C0");
  EXPECT_EQ(fromQt(control<QGroupBox>(*window, "frame_1").title()),
            u"QrCodes : 4 Raccourcis créés");
}

TEST_F(Options, AKeystrokeAmongTenThousandShortcutsTouchesNoMoreThanItMust) {
  std::vector<Shortcut> many(10'000, {u"000000001", u"nom", u"adresse"});
  table.load(10'001, many);
  open();
  selectRow(9'000);
  QSignalSpy reset(grid().model(), &QAbstractItemModel::modelReset);
  QSignalSpy changed(grid().model(), &QAbstractItemModel::dataChanged);
  type("txtNameQrCode", "x");
  EXPECT_EQ(table.rows()[8'999].name, u"x");
  EXPECT_EQ(reset.count(), 0);
  EXPECT_EQ(changed.count(), 1);
  EXPECT_EQ(label("labXY"), u"L9000 - C0");
}

TEST_F(Options, AnotherTableIsReadAtOnce) {
  open();
  selectRow(2);
  ShortcutTable other;
  other.load(3, {{u"000000002", u"autre", u"web"}});
  scratch.write("ailleurs/res_css/js/shortQrCode.js", shortcutBytes(other));
  questions.files = {scratch.text("ailleurs/res_css/js/shortQrCode.js")};
  questions.answers = {Answer::Ok};
  click("cmdJs");
  EXPECT_EQ(settings.shortcutPath, scratch.text("ailleurs/res_css/js/shortQrCode.js"));
  EXPECT_EQ(shown("txtPathJs"), settings.shortcutPath);
  EXPECT_EQ(table.rows(), other.rows());
  EXPECT_EQ(questions.boxes, std::vector<Box>{shortcutsReadAgainBox(1)});
  EXPECT_EQ(label("labXY"), u"") << "nothing is selected in another table";
}

TEST_F(Options, CancellingTheTablesDialogChangesNothing) {
  open();
  const Text before = settings.shortcutPath;
  questions.files = {std::nullopt};
  click("cmdJs");
  EXPECT_EQ(settings.shortcutPath, before);
  EXPECT_EQ(table.rows().size(), 3u);
}

TEST_F(Options, ATableThatIsNoneAndIsNotToBeReplacedEndsTheProgram) {
  open();
  scratch.write("ailleurs/shortQrCode.js", "du bruit");
  questions.files = {scratch.text("ailleurs/shortQrCode.js")};
  questions.answers = {Answer::No, Answer::Ok};
  click("cmdJs");
  EXPECT_EQ(questions.boxes, std::vector<Box>({createShortcutsBox(), shortcutsMissingBox()}));
  EXPECT_EQ(journal.back(), "end");
  EXPECT_EQ(scratch.read("ailleurs/shortQrCode.js"), "du bruit");
}

TEST_F(Options, EditingTheFileBacksItUpFirst) {
  open();
  scratch.write("nav/res_css/js/shortQrCode.js", "la table");
  questions.answers = {Answer::Ok};
  click("cmdOpenJs");
  EXPECT_EQ(questions.boxes, std::vector<Box>{editShortcutsBox()});
  EXPECT_EQ(scratch.read("nav/res_css/js/shortQrCode_bak1.js"), "la table");
  EXPECT_EQ(journal.back(), "start notepad " + toUtf8(nativePath(settings.shortcutPath)));

  questions.answers = {Answer::Cancel};
  journal.clear();
  click("cmdOpenJs");
  EXPECT_EQ(journal, Journal{"ask Tavrollo - Editon de shortQrCode.js"});
  EXPECT_FALSE(std::filesystem::exists(scratch.path("nav/res_css/js/shortQrCode_bak2.js")));
}

TEST_F(Options, AFileThatCannotBeBackedUpIsNotEdited) {
  open();
  std::filesystem::remove(scratch.path("nav/res_css/js/shortQrCode.js"));
  questions.answers = {Answer::Ok, Answer::Ok};
  click("cmdOpenJs");
  ASSERT_EQ(questions.boxes.size(), 2u);
  EXPECT_TRUE(questions.boxes[1].text.starts_with(u"Erreur dans cmdOpenJs_Click"));
  for (const std::string& line : journal) EXPECT_FALSE(line.starts_with("start "));
}

// --- The browser --------------------------------------------------------------------------------

TEST_F(Options, TypingAnIntervalClampsItDigitByDigit) {
  open();
  type("txtTempo", "1");
  EXPECT_EQ(shown("txtTempo"), u"600");
  EXPECT_EQ(settings.pollInterval, 600);
}

TEST_F(Options, PastedIntervals) {
  struct Row {
    const char* pasted;
    TextView shown;
    std::int32_t interval;
  };
  const Row rows[] = {{"2500", u"2500", 2500}, {"5001", u"5000", 5000}, {"12", u"600", 600},
                      {"99999", u"600", 600},  {"abc", u"600", 600},    {"-1", u"600", 600}};
  open();
  for (const Row& row : rows) {
    paste("txtTempo", row.pasted);
    EXPECT_EQ(shown("txtTempo"), row.shown) << row.pasted;
    EXPECT_EQ(settings.pollInterval, row.interval) << row.pasted;
  }
}

TEST_F(Options, AnEmptyIntervalKeepsTheOldOneAndIsFilledWhenTheBoxIsLeft) {
  open();
  paste("txtTempo", "2500");
  box("txtTempo").selectAll();
  QTest::keyClick(&box("txtTempo"), Qt::Key_Delete);
  EXPECT_EQ(shown("txtTempo"), u"");
  EXPECT_EQ(settings.pollInterval, 2500);
  QTest::keyClick(&box("txtTempo"), Qt::Key_Tab);
  EXPECT_EQ(shown("txtTempo"), u"2500");
}

TEST_F(Options, TheSpinButtonsAndTheArrowKeysStepTheInterval) {
  open();
  goTo("txtTempo");
  click("UpDown_Up");
  EXPECT_EQ(shown("txtTempo"), u"1100");
  click("UpDown_Down");
  click("UpDown_Down");
  EXPECT_EQ(settings.pollInterval, 900);
  QTest::keyClick(&box("txtTempo"), Qt::Key_Up);
  EXPECT_EQ(shown("txtTempo"), u"1000");
  paste("txtTempo", "5000");
  QTest::keyClick(&box("txtTempo"), Qt::Key_Up);
  EXPECT_EQ(shown("txtTempo"), u"5000");
  paste("txtTempo", "600");
  QTest::keyClick(&box("txtTempo"), Qt::Key_Down);
  EXPECT_EQ(shown("txtTempo"), u"600");
}

TEST_F(Options, AnIntervalFromTheFileIsShownAsItIs) {
  settings.pollInterval = 200;
  open();
  EXPECT_EQ(shown("txtTempo"), u"200");
  EXPECT_EQ(settings.pollInterval, 200);
}

TEST_F(Options, BrowsingForFirefoxSaysWhatToLookForAndFillsTheBox) {
  open();
  questions.answers = {Answer::Ok};
  questions.files = {u"/profil/cookies.sqlite"};
  const Text before = settings.cookiesPath;
  click("cmdBrowse");
  ASSERT_EQ(questions.fileRequests.size(), 1u);
  const FileRequest& request = questions.fileRequests[0];
  EXPECT_EQ(request.title,
            u"Cookies  FireFox : Cherchez dans ****.default le fichier cookies.sqlite");
  EXPECT_EQ(questions.boxes, std::vector<Box>{cookieStoreHintBox(request.startFolder)});
  EXPECT_EQ(shown("txtPathCookies"), u"/profil/cookies.sqlite");
  EXPECT_EQ(settings.cookiesPath, before) << "only apply takes it";
}

TEST_F(Options, BrowsingForChromeAsksNothingFirstAndCancellingChangesNothing) {
  open();
  click("optNav_1");
  questions.files = {std::nullopt};
  click("cmdBrowse");
  EXPECT_TRUE(questions.boxes.empty());
  EXPECT_EQ(questions.fileRequests[0].title,
            u"Cookies  G-Chrome : Cherchez le fichier cookies (sans extension)");
  EXPECT_EQ(shown("txtPathCookies"), settings.cookiesPath);
}

TEST_F(Options, WithChromeTheWindowSaysWhatHolds) {
  open();
  goTo("txtTempo");
  EXPECT_FALSE(control<QLabel>(*window, "labChrome").isVisible());
  click("optNav_1");
  EXPECT_TRUE(control<QLabel>(*window, "labChrome").isVisible());
}

TEST_F(Options, ABrowserThatIsNeitherIsShownAsNeitherAndKept) {
  settings.browser = 7;
  open();
  goTo("txtTempo");
  EXPECT_FALSE(control<QRadioButton>(*window, "optNav_0").isChecked());
  EXPECT_FALSE(control<QRadioButton>(*window, "optNav_1").isChecked());
  EXPECT_FALSE(control<QLabel>(*window, "labChrome").isVisible());
  click("cmdOk");
  EXPECT_EQ(settings.browser, 7);
}

// --- The display --------------------------------------------------------------------------------

TEST_F(Options, ScalesAreTakenAsTheyAreTypedAndNoiseIsIgnored) {
  open();
  type("txtScaleX", "283,5");
  type("txtScaleY", "600");
  EXPECT_EQ(settings.scaleX, 283.5);
  EXPECT_EQ(settings.scaleY, 600);
  type("txtScaleX", "abc");
  EXPECT_EQ(settings.scaleX, 283.5);
  type("txtScaleY", "-3");
  EXPECT_EQ(settings.scaleY, -3) << "no range is imposed";
}

TEST_F(Options, TheScalesAreTriedWithTheSplash) {
  open();
  click("cmdTestGraph");
  EXPECT_EQ(journal, Journal{"about"});
}

TEST_F(Options, TheMessagesBoxIsTheSetting) {
  settings.notifications = 2;
  open();
  QCheckBox& infos = control<QCheckBox>(*window, "chkInfos");
  EXPECT_EQ(infos.checkState(), Qt::PartiallyChecked);
  EXPECT_EQ(settings.notifications, 2);
  infos.click();
  EXPECT_EQ(settings.notifications, 1);
  infos.click();
  EXPECT_EQ(settings.notifications, 0);
  infos.click();
  EXPECT_EQ(settings.notifications, 1);
  EXPECT_EQ(infos.checkState(), Qt::Checked) << "there is no way back to neither";
}

TEST_F(Options, TheSettingsFileIsOpenedInTheEditor) {
  open();
  click("cmdOpenCfg");
  EXPECT_EQ(journal, Journal{"start notepad " + scratch.path("config.cfg")});

  shell.failure = {53, u"Fichier introuvable : notepad"};
  questions.answers = {Answer::Ok};
  click("cmdOpenCfg");
  EXPECT_EQ(questions.boxes,
            std::vector<Box>{errorBox(u"cmdOpenCfg_Click", u"Fichier introuvable : notepad")});
}

// --- Leaving ------------------------------------------------------------------------------------

TEST_F(Options, ApplySavesAndStays) {
  open();
  click("optNav_1");
  paste("txtTempo", "2000");
  click("cmdOk");
  EXPECT_EQ(journal, Journal{"interval 2000"});
  EXPECT_EQ(scratch.read("config.cfg"), configBytes(settings, locale));
  EXPECT_EQ(settings.browser, 1);
  EXPECT_EQ(scratch.read("nav/res_css/js/shortQrCode.js"), shortcutBytes(table));
  EXPECT_TRUE(window->isVisible());
}

TEST_F(Options, CloseSavesHidesAndWatchesAgain) {
  open();
  click("cmdClose");
  EXPECT_EQ(journal, Journal({"interval 1000", "restart"}));
  EXPECT_FALSE(window->isVisible());
  EXPECT_EQ(scratch.read("config.cfg"), configBytes(settings, locale));
}

TEST_F(Options, FilesThatCannotBeWrittenAreToldAndTheWindowClosesAllTheSame) {
  open();
  programFolder = scratch.text("missing");
  settings.shortcutPath = scratch.text("missing/shortQrCode.js");
  questions.answers = {Answer::Ok, Answer::Ok};
  click("cmdClose");
  EXPECT_EQ(questions.boxes, std::vector<Box>({configWriteFailedBox(), shortcutsWriteFailedBox()}));
  EXPECT_EQ(journal.back(), "restart");
  EXPECT_FALSE(window->isVisible());
}

TEST_F(Options, ARejectedStoreKeepsTheWindowOpenUntilAGoodOneIsGiven) {
  open();
  paste("txtPathCookies", "/nulle/part");
  questions.answers = {Answer::Yes};
  click("cmdClose");
  EXPECT_EQ(questions.boxes, std::vector<Box>{cookieStoreRejectedBox()});
  EXPECT_TRUE(window->isVisible());
  EXPECT_FALSE(std::filesystem::exists(scratch.path("config.cfg")));

  window->setCookiesPath(scratch.text("cookies.sqlite"));
  click("cmdClose");
  EXPECT_FALSE(window->isVisible());
}

TEST_F(Options, ARejectedStoreMayEndTheProgram) {
  open();
  paste("txtPathCookies", "");
  questions.answers = {Answer::No};
  click("cmdOk");
  EXPECT_EQ(journal.back(), "end");
}

TEST_F(Options, CancelReadsTheSettingsAgainAndKeepsTheGrid) {
  open();
  selectRow(2);
  click("cmdDel");
  journal.clear();
  click("cmdCancel");
  EXPECT_EQ(journal, Journal({"pump", "InitVar"}));
  EXPECT_FALSE(window->isVisible());
  EXPECT_EQ(table.rows().size(), 2u);
}

TEST_F(Options, TheTablesFileIsWrittenByApplyAlone) {
  open();
  selectRow(2);
  type("txtNameQrCode", "autre");
  type("txtQrCode", "web44");
  click("cmdDel");
  EXPECT_FALSE(somethingAt(settings.shortcutPath));
  click("cmdOk");
  EXPECT_EQ(scratch.read("nav/res_css/js/shortQrCode.js"), shortcutBytes(table));
}

TEST_F(Options, EscapeAndTheTitleBarAreCancel) {
  open();
  QTest::keyClick(window.get(), Qt::Key_Escape);
  EXPECT_EQ(journal, Journal({"pump", "InitVar"}));
  EXPECT_FALSE(window->isVisible());

  journal.clear();
  window->show();
  window->close();
  EXPECT_EQ(journal, Journal({"pump", "InitVar"}));
  EXPECT_FALSE(window->isVisible());
}

TEST_F(Options, ReturnIsOkAndClose) {
  open();
  goTo("txtPathCookies");
  QTest::keyClick(&box("txtPathCookies"), Qt::Key_Return);
  EXPECT_EQ(journal, Journal({"interval 1000", "restart"}));
}

TEST_F(Options, ReturnPressesTheButtonThatHasTheFocus) {
  open();
  control<QPushButton>(*window, "cmdCancel").setFocus();
  QTest::keyClick(&control<QPushButton>(*window, "cmdCancel"), Qt::Key_Return);
  EXPECT_EQ(journal, Journal({"pump", "InitVar"})) << "not the default button";
  window->show();
  goTo("cmdCheck");
  QTest::keyClick(&control<QPushButton>(*window, "cmdCheck"), Qt::Key_Enter, Qt::KeypadModifier);
  EXPECT_EQ(journal.back(), "check");
}

TEST_F(Options, TheWholeWindowIsReachedWithTheTabKey) {
  open();
  for (int tab = 0; tab < tabs().count(); ++tab) {
    tabs().setCurrentIndex(tab);
    std::set<QString> expected = {QStringLiteral("cmdOk"), QStringLiteral("cmdClose"),
                                  QStringLiteral("cmdCancel")};
    for (QWidget* widget : tabs().widget(tab)->findChildren<QWidget*>()) {
      const bool named =
          !widget->objectName().isEmpty() && !widget->objectName().startsWith(QLatin1String("qt_"));
      if (named && widget->isEnabled() && (widget->focusPolicy() & Qt::TabFocus)) {
        expected.insert(widget->objectName());
      }
    }
    // A group of option buttons is one stop; the arrow keys go on inside.
    expected.erase(QStringLiteral("optNav_1"));
    std::set<QString> reached;
    for (int step = 0; step < 30; ++step) {
      QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
      reached.insert(QApplication::focusWidget()->objectName());
    }
    for (const QString& name : expected) {
      EXPECT_TRUE(reached.count(name)) << name.toStdString() << " on page " << tab;
    }
  }
}

TEST_F(Options, TheTabKeyGoesThroughThePageAndThenTheButtons) {
  open();
  EXPECT_EQ(QApplication::focusWidget()->objectName(), QStringLiteral("txtPathCookies"));
  QStringList order;
  for (int step = 0; step < 5; ++step) {
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    order.append(QApplication::focusWidget()->objectName());
  }
  EXPECT_EQ(order.join(QLatin1Char(' ')).toStdString(),
            "cmdBrowse txtTempo cmdOk cmdClose cmdCancel");
}

TEST_F(Options, EveryControlHasANameForScreenReaders) {
  open();
  for (QWidget* widget : window->findChildren<QWidget*>()) {
    const bool entry = qobject_cast<QLineEdit*>(widget) || qobject_cast<QTableView*>(widget) ||
                       qobject_cast<QToolButton*>(widget);
    if (!entry || widget->objectName().startsWith(QLatin1String("qt_")) ||
        widget->objectName().startsWith(QLatin1String("Scroll"))) {
      continue;
    }
    EXPECT_FALSE(widget->accessibleName().isEmpty()) << widget->objectName().toStdString();
  }
}
