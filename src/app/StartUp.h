// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "app/Companion.h"
#include "bridge/CookieStoreReader.h"
#include "bridge/CookieWatcher.h"
#include "platform/DefaultBrowser.h"
#include "platform/Questions.h"
#include "platform/Shell.h"

// The way from the program's start to the running watcher.
class StartUp {
 public:
  // What the main window does at the steps that need windows. Names are the main window's own.
  class Host {
   public:
    virtual ~Host() = default;
    virtual void addTrayIcon() = 0;
    virtual void setUpNotice() = 0;  // shows the notification window, below the screen
    virtual void attachMenuBitmaps() = 0;
    virtual void showSettings() = 0;  // copies the settings into the options window's fields
    virtual void pumpEvents() = 0;
    virtual void enableTimerFirstSearch() = 0;
    virtual void lockMenus(bool lock) = 0;
    virtual void MenuParam_Click() = 0;
    virtual void MenuAbout_Click() = 0;
    virtual void searchCookieStore() = 0;  // opens the recursive search for cookies.sqlite
  };

  struct Parts {
    Companion& companion;
    CookieStoreReader& reader;
    CookieWatcher& watcher;
    Shell& shell;
    Questions& questions;
    DefaultBrowser& browser;
    Host& host;
  };

  explicit StartUp(Parts parts) : to_(parts) {}

  // Both answer false when the program is to end at once.

  // `firstInstance`: no other instance runs. `executablePath` is this program's file.
  bool Form_Load(bool firstInstance, const Text& executablePath);

  // Reads the program's files and starts what they allow; also run again by the options window.
  bool InitVar();

 private:
  bool readSettings();
  bool loadTable();
  void checkShortcutPath();

  Parts to_;
};
