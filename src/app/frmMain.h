// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QTimer>
#include <QWidget>
#include <memory>

#include "app/Companion.h"
#include "app/MenuActions.h"
#include "app/StartUp.h"
#include "barcode/frmCodeBarrePrev.h"
#include "bridge/CommandActions.h"
#include "bridge/CookieStoreReader.h"
#include "bridge/CookieWatcher.h"
#include "bridge/frmDebug.h"
#include "config/frmOptions.h"
#include "config/frmRecursiveSearch.h"
#include "platform/DefaultBrowser.h"
#include "platform/Questions.h"
#include "platform/Shell.h"
#include "sync/frmSynchro.h"
#include "tray/MenuWindow.h"
#include "tray/TrayHost.h"
#include "tray/TrayIcon.h"
#include "tray/TrayMenu.h"
#include "tray/frmInfos.h"
#include "windows/frmTest.h"
#include "windows/qt/SplashShow.h"

// The main window. It is never shown: it owns the timers, the tray icon and its menu, and joins the
// program's rooms.
class frmMain : public QWidget, public StartUp::Host, public CookieWatcher::Host {
  Q_OBJECT

 public:
  frmMain(Companion& companion, Shell& shell, Questions& questions, DefaultBrowser& browser);
  ~frmMain() override;

  // The load handler. False when the program is to end at once.
  bool Form_Load(bool firstInstance);

  // Lets the options window switch the session's start. To be called in front of Form_Load.
  void offerAutostart(Autostart& autostart) { autostart_ = &autostart; }

  // Takes the icon away, saves the cookie offset and leaves at once, whatever windows are open.
  [[noreturn]] void endProgram();

  // The menu's entries that open a window, or end the program.
  void MenuQuit_Click();
  void menuCodeBarre_Click();
  void menuDebug_Click();
  void showTestWindow();  // from the debug monitor
  void MenuAbout_Click() override;
  void MenuParam_Click() override;
  void MenuSynchro_Click();

  // The program's start.
  void addTrayIcon() override;
  void setUpNotice() override;
  void attachMenuBitmaps() override;
  void showSettings() override;
  void enableTimerFirstSearch() override;
  void lockMenus(bool lock) override;
  void searchCookieStore() override;

  // The cookie watcher.
  void pumpEvents() override;
  void enableTimerCookies(bool on) override;
  void saveOffsetCookie() override;
  void showNotice(const Text& message) override;
  void valueHandled(const Text& lastField) override;

 private:
  void TimerFirstSearch_Timer();
  void TimerCookies_Timer();
  bool mayWatch() const;
  void trayAppeared();
  void noTray();
  void menuChosen(TextView name);
  frmOptions& options();
  frmRecursiveSearch& recursiveSearch();
  OptionsSurroundings optionsSurroundings();
  void checkInstallation();
  SearchSurroundings searchSurroundings();
  SynchroSurroundings synchroSurroundings();
  bool isSynchronising() const { return synchro_ && synchro_->isOpen(); }
  SplashContents splashContents() const;
  void writeKey(const Text& key);
  CommandActions::Surroundings actionSurroundings();
  MenuActions::Surroundings menuSurroundings();

  Companion& companion_;
  Shell& shell_;
  Questions& questions_;
  DefaultBrowser& browser_;
  Autostart* autostart_ = nullptr;

  TrayMenu MenuIcon_;
  TrayHost trayHost_;
  std::unique_ptr<TrayIcon> trayIcon_;
  std::unique_ptr<MenuWindow> menuWindow_;
  frmInfos infos_;
  std::unique_ptr<frmCodeBarrePrev> codeBarre_;
  std::unique_ptr<frmDebug> debug_;
  std::unique_ptr<frmTest> test_;
  std::unique_ptr<frmOptions> options_;
  std::unique_ptr<frmRecursiveSearch> search_;
  std::unique_ptr<frmSynchro> synchro_;
  SplashShow splash_;

  CookieStoreReader reader_;
  CommandActions actions_;
  MenuActions menuActions_;
  CookieWatcher watcher_;
  StartUp startUp_;
  std::int64_t valuesHandled_ = 0;
  bool isRunningInstance_ = false;

  QTimer TimerFirstSearch_;
  QTimer TimerCookies_;
};
