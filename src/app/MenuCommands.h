// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <set>
#include <span>

#include "text/Text.h"

class frmMain;

// What the entries of the tray menu run that are the main window's own; MenuActions has the others.
struct MenuCommand {
  TextView entry;
  void (frmMain::*run)();
};
std::span<const MenuCommand> menuCommands();

// The entries that have a command.
std::set<TextView> availableCommands();
