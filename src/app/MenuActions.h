// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>
#include <span>

#include "app/Companion.h"
#include "platform/Questions.h"
#include "platform/Shell.h"
#include "platform/System.h"

// The entries of the tray menu that need no window of the program: they start a program, open a
// document or a page, or tell something. Handlers bear the names of their entries.
class MenuActions {
 public:
  struct Surroundings {
    Companion& companion;
    Shell& shell;
    Questions& questions;
    Text executablePath;  // this program's file
    int revision = 0;     // the last of its three version numbers
    std::function<std::time_t()> now;
    std::function<std::optional<SystemDescription>()> describeSystem;
  };

  explicit MenuActions(Surroundings surroundings) : to_(std::move(surroundings)) {}

  void MenuNotePad_Click();
  void MenuWordPad_Click();
  void MenuChar_Click();
  void MenuCtrlPanel_Click();
  void MenuDos_Click();
  void MenuWinVer_Click();
  void MenuRegEdit_Click();
  void MenuExcel_Click();
  void MenuMSword_Click();
  void MenuExplorer_Click();
  void MenuWebAdmin_Click();
  void menuWebUser_Click();
  void menuAide_Click();
  void MenuMAJ_Click();
  void menuContact_Click();
  void MenuEnlev_Click() {}

  // Shows the file about the cookie store.
  void showCookieInformation();

 private:
  void start(TextView procedure, const Text& commandLine);
  void tell(TextView procedure, const Failure& failure);
  void openPage(TextView name);
  Text templatePath(TextView name) const;

  Surroundings to_;
};

struct MenuAction {
  TextView entry;
  void (MenuActions::*run)();
};
std::span<const MenuAction> menuActions();
