// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/MenuCommands.h"

#include "app/MenuActions.h"
#include "app/frmMain.h"

std::span<const MenuCommand> menuCommands() {
  static constexpr MenuCommand kCommands[] = {
      {u"MenuAbout", &frmMain::MenuAbout_Click}, {u"menuCodeBarre", &frmMain::menuCodeBarre_Click},
      {u"menuDebug", &frmMain::menuDebug_Click}, {u"MenuQuit", &frmMain::MenuQuit_Click},
      {u"MenuParam", &frmMain::MenuParam_Click}, {u"MenuSynchro", &frmMain::MenuSynchro_Click},
  };
  return kCommands;
}

std::set<TextView> availableCommands() {
  std::set<TextView> names;
  for (const MenuCommand& command : menuCommands()) names.insert(command.entry);
  for (const MenuAction& action : menuActions()) names.insert(action.entry);
  return names;
}
