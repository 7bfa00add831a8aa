// SPDX-License-Identifier: GPL-3.0-or-later
#include "tray/MenuTree.h"

#include <algorithm>

namespace {

using enum MenuEntryKind;

// "Outils" stands inside "Windows": so the lock on that submenu covers the command prompt and the
// registry editor.
constexpr auto kEntries = std::to_array<MenuEntry>({
    {u"MenuWin", u"Windows", Submenu, kMenuName, u""},
    {u"MenuExcel", u" Excel", Command, u"MenuWin", u"excel"},
    {u"MenuMSword", u" MS Word", Command, u"MenuWin", u"word"},
    {u"MenuNotePad", u" Bloc Note", Command, u"MenuWin", u"notepad"},
    {u"MenuWordPad", u" Word Pad", Command, u"MenuWin", u"wordpad"},
    {u"MenuOutils", u"Outils", Submenu, u"MenuWin", u""},
    {u"MenuDos", u" Commande DOS", Command, u"MenuOutils", u"cmd"},
    {u"MenuChar", u" Table de Caractères", Command, u"MenuOutils", u""},
    {u"MenuWinVer", u" Version de Windows", Command, u"MenuOutils", u""},
    {u"MenuRegEdit", u" RegEdit", Command, u"MenuOutils", u"regedit"},
    {u"MenuCtrlPanel", u" Panneau de Configuration", Command, u"MenuOutils", u""},
    {u"MenuTavrollo", u"Tavrollo", Submenu, kMenuName, u""},
    {u"MenuAbout", u" A propos de Tavrollo", Command, u"MenuTavrollo", u"infos"},
    {u"menuContact", u"Me contacter", Command, u"MenuTavrollo", u"mail"},
    {u"MenuParam", u"Paramètres", Command, u"MenuTavrollo", u"parametres"},
    {u"menuDebug", u"Debug Monitor", Command, u"MenuTavrollo", u""},
    {u"menuCodeBarre", u"Codes Barres", Command, u"MenuTavrollo", u"CodeBarre"},
    {u"MenuMAJ", u"Vérifier Mise à jour", Command, u"MenuTavrollo", u"update"},
    {u"MenuQuit", u" Quitter Tavrollo", Command, kMenuName, u"close"},
    {u"menuAide", u" Aide Tavrollo", Command, kMenuName, u"aide"},
    {u"menuOff", u"", Separator, kMenuName, u""},
    {u"MenuSynchro", u"Synchroniser", Command, kMenuName, u"synchro"},
    {u"MenuExplorer", u"Explorer le Dossier", Command, kMenuName, u"explorer"},
    {u"menuOff2", u"", Separator, kMenuName, u""},
    {u"menuWebUser", u"Page Elève", Command, kMenuName, u"webUser"},
    {u"MenuWebAdmin", u"Page Prof.", Command, kMenuName, u"webAdmin"},
    {u"MenuEnlev", u"", Command, kMenuName, u""},
});

constexpr auto kImageListKeys = std::to_array<TextView>(
    {u"agenda",   u"synchro", u"webAdmin", u"update",   u"mail",       u"webUser",
     u"info",     u"regedit", u"aide",     u"close",    u"excel",      u"wordpad",
     u"notepad",  u"word",    u"cmd",      u"explorer", u"calc",       u"alarm",
     u"timehide", u"backup",  u"web",      u"infos",    u"parametres", u"CodeBarre"});

constexpr auto kStartOrder =
    std::to_array<TextView>({u"close", u"aide", u"synchro", u"explorer", u"webUser", u"webAdmin",
                             u"infos", u"mail", u"parametres", u"CodeBarre", u"update", u"excel",
                             u"word", u"notepad", u"wordpad", u"cmd", u"regedit"});

constexpr auto kLocked = std::to_array<TextView>(
    {u"MenuTavrollo", u"MenuWebAdmin", u"MenuExplorer", u"MenuWin", u"MenuSynchro"});

}  // namespace

std::span<const MenuEntry> menuEntries() { return kEntries; }

const MenuEntry* menuEntry(TextView name) {
  const auto found = std::find_if(kEntries.begin(), kEntries.end(),
                                  [&](const MenuEntry& entry) { return entry.name == name; });
  return found == kEntries.end() ? nullptr : &*found;
}

std::span<const TextView> imageListKeys() { return kImageListKeys; }

std::span<const TextView> bitmapKeysInStartOrder() { return kStartOrder; }

std::span<const TextView> lockedEntries() { return kLocked; }

void lockMenu(bool& lock, const std::function<void(TextView name, bool enabled)>& setEnabled) {
  lock = !lock;
  for (const TextView name : kLocked) setEnabled(name, lock);
}
