// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QAbstractButton>
#include <QCheckBox>
#include <QLineEdit>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QRadioButton>
#include <QTabWidget>
#include <QTableView>
#include <chrono>
#include <filesystem>
#include <memory>

#include "barcode/frmCodeBarrePrev.h"
#include "barcode/qt/SymbolView.h"
#include "bridge/frmDebug.h"
#include "config/frmOptions.h"
#include "config/frmRecursiveSearch.h"
#include "platform/qt/MessageBoxQuestions.h"
#include "support/Doubles.h"
#include "support/Scratch.h"
#include "sync/frmSynchro.h"
#include "tray/DesktopNotice.h"
#include "tray/MenuTree.h"
#include "tray/MenuWindow.h"
#include "tray/TrayMenu.h"
#include "tray/frmInfos.h"
#include "ui/UiMain.h"
#include "windows/frmSplash.h"
#include "windows/frmTest.h"

// Every window of the program, filled as its user has it, with stand-ins for the rest of the world.
class AllWindows {
 public:
  AllWindows() {
    scratch_.write("firefox/a/cookies.sqlite", "x");
    scratch_.write("firefox/b/cookies.sqlite", std::string(2048, 'x'));
    scratch_.write("nav/res_css/js/shortQrCode.js", "x");
    scratch_.write("nav/user_datas/neuf.txt", "0");
    scratch_.write("nav/user_datas/docs/plan.txt", "neuf");
    scratch_.write("stick/docs/plan.txt", "vieux");
    const std::filesystem::path older(scratch_.path("stick/docs/plan.txt"));
    std::filesystem::last_write_time(
        older, std::filesystem::last_write_time(older) - std::chrono::hours(24));
    scratch_.write("stick/rendu.txt", "1");
    scratch_.write("table.js", "var FreeId=9\r\nvar tabObj = new Object();\r\n"
                               "tabObj[\"000000003\"]=\"Plan_|_/plan.pdf\";\r\n"
                               "function ShortQrCode(myKey){\r\n");
    settings_.cookiesPath = scratch_.text("firefox/a/cookies.sqlite");
    settings_.shortcutPath = scratch_.text("nav/res_css/js/shortQrCode.js");
    settings_.backupPath = scratch_.text("stick") + u"/";
    settings_.pollInterval = 1000;
    settings_.scaleX = settings_.scaleY = 567;
    shortcuts_.load(9, {{u"000000001", u"Plan", u"loc/plan.pdf"},
                        {u"000000004", u"Site", u"webhttps://www.example.org/"}});
    shortcuts_.setSource(settings_.shortcutPath);
  }

  // Shows one window after the other, in each of its states, and lets `look` look at it.
  void showEach(const std::function<void(QWidget& window, const std::string& name)>& look) {
    look_ = look;
    showOptions();
    showSearch();
    showBarcode();
    showSynchro();
    showDebug();
    showTest();
    showSmallOnes();
    showMenu();
    showBox();
  }

 private:
  void present(QWidget& window, const std::string& name) {
    window.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&window)) << name;
    QCoreApplication::processEvents();
    look_(window, name);
  }

  void showOptions() {
    frmOptions window({.settings = settings_,
                       .shortcuts = shortcuts_,
                       .programFolder = folder_,
                       .locale = locale_,
                       .shell = shell_,
                       .questions = questions_,
                       .setInterval = [](std::int32_t) {},
                       .restartWatching = [] {},
                       .pumpEvents = [] {},
                       .InitVar = [] {},
                       .MenuAbout_Click = [] {},
                       .endProgram = [] {},
                       .checkInstallation = [] {},
                       .autostart = &autostart_});
    ASSERT_TRUE(window.Form_Load());
    auto& tabs = control<QTabWidget>(window, "tbsOptions");
    auto& grid = control<QTableView>(window, "Grid");
    grid.setCurrentIndex(grid.model()->index(0, 0));
    control<QRadioButton>(window, "optNav_1").setChecked(true);
    for (int tab = 0; tab < tabs.count(); ++tab) {
      tabs.setCurrentIndex(tab);
      present(window, "frmOptions, " + tabs.tabText(tab).toStdString());
    }
  }

  void showSearch() {
    frmRecursiveSearch window({.settings = settings_,
                               .locale = locale_,
                               .questions = questions_,
                               .pumpEvents = [] {},
                               .showSettings = [] {},
                               .storeChosen = [](const Text&) {},
                               .storeNotFound = [] {},
                               .MenuAbout_Click = [] {}});
    questions_.answers = {Answer::Ok};
    window.search(scratch_.text(), u"cookies.sqlite");
    control<QAbstractItemView>(window, "listResult")
        .setCurrentIndex(control<QAbstractItemView>(window, "listResult").model()->index(0, 0));
    present(window, "frmRecursiveSearch");
  }

  void showBarcode() {
    frmCodeBarrePrev window({.programFolder = folder_,
                             .locale = locale_,
                             .shell = shell_,
                             .questions = questions_,
                             .fontPage = [] { return Text(u"/nav/aide.html"); }},
                            [](QPrinter&, bool) { return false; });
    window.Form_Load();
    control<QLineEdit>(window, "txtSource").setText(QStringLiteral("400638133393"));
    control<QLineEdit>(window, "TxtAdd").setText(QStringLiteral("12"));
    present(window, "frmCodeBarrePrev, EAN 13");
    control<QRadioButton>(window, "OptType_4").setChecked(true);
    control<QCheckBox>(window, "chkKey25i").setChecked(true);
    control<SymbolView>(window, "rtbCBar").selectAll();
    present(window, "frmCodeBarrePrev, 2/5");
  }

  void showSynchro() {
    frmSynchro window({.settings = settings_,
                       .programFolder = folder_,
                       .locale = locale_,
                       .shell = shell_,
                       .questions = questions_,
                       .pumpEvents = [] { QCoreApplication::processEvents(); },
                       .trace = [](const Text&) {},
                       .readShortcutsAgain = [] {},
                       .restartWatching = [] {}});
    window.Form_Load();
    present(window, "frmSynchro");
    control<QAbstractButton>(window, "cmdCompare").click();
    auto& grid = control<QTableView>(window, "Grid");
    ASSERT_GE(grid.model()->rowCount(), 3);
    grid.selectRow(1);
    present(window, "frmSynchro, compared");
  }

  void showDebug() {
    TraceBuffer trace;
    trace.log(u"CookieValue est nul");
    frmDebug window(trace, {.showCookieInformation = [] {}, .showTestWindow = [] {}});
    present(window, "frmDebug");
  }

  void showTest() {
    const Text path = scratch_.text("table.js");
    frmTest window({path, locale_, questions_, shortcuts_});
    window.Form_Load();
    control<QLineEdit>(window, "Text1").setText(QStringLiteral("été"));
    control<QAbstractButton>(window, "cmdEncodeUtf8").click();
    control<QTableView>(window, "Grid").selectRow(0);
    present(window, "frmTest");
  }

  void showSmallOnes() {
    SplashContents contents;
    contents.version = {1, 4, 67};
    contents.programModified = 1'489'575'600;
    auto* splash = new frmSplash(contents);  // deletes itself
    present(*splash, "frmSplash");
    splash->close();

    frmInfos notice(nullptr);
    notice.setUp();
    notice.showNotice(u"Raccourci Créé");
    ASSERT_TRUE(waitUntil(
        [&] { return notice.geometry().bottom() <= notice.screen()->geometry().bottom(); },
        30000));  // its steps are counted, not timed
    look_(notice, "frmInfos");
  }

  void showMenu() {
    std::set<TextView> names;
    for (const MenuEntry& entry : menuEntries()) names.insert(entry.name);
    TrayMenu menu(names, [](TextView) {});
    menu.attachBitmaps();
    MenuWindow window(menu);
    present(window, "MenuWindow");
    menu.popUpAt({40, 40});
    menu.menu().setActiveAction(menu.menu().actions().at(3));
    present(menu.menu(), "MenuIcon");
    menu.menu().close();
  }

  void showBox() {
    QTimer look;
    QObject::connect(&look, &QTimer::timeout, [&] {
      auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
      if (!box || !box->isActiveWindow()) return;
      look.stop();
      look_(*box, "message box");
      box->done(QMessageBox::No);
    });
    look.start(10);
    MessageBoxQuestions().ask({.title = u"Tavrollo",
                               .text =
                                   u"Voulez-vous vraiment quitter Tavrollo ?\r(Les applications "
                                   u"ne seront plus lancées à partir d'un Qr-Code.)\r",
                               .icon = BoxIcon::Exclamation,
                               .buttons = BoxButtons::YesNo,
                               .defaultAnswer = Answer::No});
  }

  Scratch scratch_;
  Text folder_ = scratch_.text();
  LocaleData locale_ = frenchLocale();
  Settings settings_;
  ShortcutTable shortcuts_;
  Journal journal_;
  RecordingShell shell_{journal_};
  ScriptedQuestions questions_{journal_};
  RecordingAutostart autostart_{journal_};
  std::function<void(QWidget&, const std::string&)> look_;
};
