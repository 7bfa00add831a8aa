// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/MenuCommands.h"

#include "app/frmMain.h"

std::span<const MenuCommand> menuCommands() {
  static constexpr MenuCommand kCommands[] = {
      {u"MenuAbout", &frmMain::MenuAbout_Click},
      {u"menuCodeBarre", &frmMain::menuCodeBarre_Click},
      {u"menuDebug", &frmMain::menuDebug_Click},
      {u"MenuQuit", &frmMain::MenuQuit_Click},
      {u"MenuParam", &frmMain::MenuParam_Click},
      {u"MenuSynchro", &frmMain::MenuSynchro_Click},
      {u"menuAide", &frmMain::menuAide_Click},
      {u"menuWebUser", &frmMain::menuWebUser_Click},
      {u"MenuWebAdmin", &frmMain::MenuWebAdmin_Click},
  };
  return kCommands;
}

std::set<TextView> availableCommands() {
  std::set<TextView> names;
  for (const MenuCommand& command : menuCommands()) names.insert(command.entry);
  return names;
}
