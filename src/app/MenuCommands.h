// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <set>
#include <span>

#include "text/Text.h"

class frmMain;

// What each entry of the tray menu runs.
struct MenuCommand {
  TextView entry;
  void (frmMain::*run)();
};
std::span<const MenuCommand> menuCommands();

// The entries that have a command.
std::set<TextView> availableCommands();
