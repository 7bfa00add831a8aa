// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <vector>

#include "tray/MenuTree.h"

namespace {

struct Row {
  TextView name;
  TextView caption;
  TextView key;
};

// Every entry in the order of declaration.
const std::vector<Row> kRows = {
    {u"MenuWin", u"Windows", u""},
    {u"MenuExcel", u" Excel", u"excel"},
    {u"MenuMSword", u" MS Word", u"word"},
    {u"MenuNotePad", u" Bloc Note", u"notepad"},
    {u"MenuWordPad", u" Word Pad", u"wordpad"},
    {u"MenuOutils", u"Outils", u""},
    {u"MenuDos", u" Commande DOS", u"cmd"},
    {u"MenuChar", u" Table de Caract\u00e8res", u""},
    {u"MenuWinVer", u" Version de Windows", u""},
    {u"MenuRegEdit", u" RegEdit", u"regedit"},
    {u"MenuCtrlPanel", u" Panneau de Configuration", u""},
    {u"MenuTavrollo", u"Tavrollo", u""},
    {u"MenuAbout", u" A propos de Tavrollo", u"infos"},
    {u"menuContact", u"Me contacter", u"mail"},
    {u"MenuParam", u"Param\u00e8tres", u"parametres"},
    {u"menuDebug", u"Debug Monitor", u""},
    {u"menuCodeBarre", u"Codes Barres", u"CodeBarre"},
    {u"MenuMAJ", u"V\u00e9rifier Mise \u00e0 jour", u"update"},
    {u"MenuQuit", u" Quitter Tavrollo", u"close"},
    {u"menuAide", u" Aide Tavrollo", u"aide"},
    {u"menuOff", u"", u""},
    {u"MenuSynchro", u"Synchroniser", u"synchro"},
    {u"MenuExplorer", u"Explorer le Dossier", u"explorer"},
    {u"menuOff2", u"", u""},
    {u"menuWebUser", u"Page El\u00e8ve", u"webUser"},
    {u"MenuWebAdmin", u"Page Prof.", u"webAdmin"},
    {u"MenuEnlev", u"", u""},
};

std::vector<TextView> namesIn(TextView parent) {
  std::vector<TextView> names;
  for (const MenuEntry& entry : menuEntries()) {
    if (entry.parent == parent) names.push_back(entry.name);
  }
  return names;
}

std::vector<TextView> listed(std::span<const TextView> items) {
  return {items.begin(), items.end()};
}

}  // namespace

TEST(MenuTree, HasEveryEntryInTheOrderOfDeclaration) {
  ASSERT_EQ(menuEntries().size(), kRows.size());
  for (std::size_t i = 0; i < kRows.size(); ++i) {
    EXPECT_EQ(menuEntries()[i].name, kRows[i].name) << i;
    EXPECT_EQ(menuEntries()[i].caption, kRows[i].caption) << i;
    EXPECT_EQ(menuEntries()[i].bitmapKey, kRows[i].key) << i;
  }
}

TEST(MenuTree, PopupIsCalledMenu) {
  EXPECT_EQ(kMenuName, u"MenuIcon");
  EXPECT_EQ(kMenuCaption, u"Menu");
}

TEST(MenuTree, HasThreeSubmenusAndTwoSeparators) {
  for (const MenuEntry& entry : menuEntries()) {
    const bool submenu =
        entry.name == u"MenuWin" || entry.name == u"MenuOutils" || entry.name == u"MenuTavrollo";
    const bool separator = entry.name == u"menuOff" || entry.name == u"menuOff2";
    EXPECT_EQ(entry.kind == MenuEntryKind::Submenu, submenu);
    EXPECT_EQ(entry.kind == MenuEntryKind::Separator, separator);
  }
}

TEST(MenuTree, NestsItsEntries) {
  EXPECT_EQ(namesIn(kMenuName),
            (std::vector<TextView>{u"MenuWin", u"MenuTavrollo", u"MenuQuit", u"menuAide",
                                   u"menuOff", u"MenuSynchro", u"MenuExplorer", u"menuOff2",
                                   u"menuWebUser", u"MenuWebAdmin", u"MenuEnlev"}));
  EXPECT_EQ(namesIn(u"MenuWin"), (std::vector<TextView>{u"MenuExcel", u"MenuMSword", u"MenuNotePad",
                                                        u"MenuWordPad", u"MenuOutils"}));
  EXPECT_EQ(namesIn(u"MenuOutils"), (std::vector<TextView>{u"MenuDos", u"MenuChar", u"MenuWinVer",
                                                           u"MenuRegEdit", u"MenuCtrlPanel"}));
  EXPECT_EQ(namesIn(u"MenuTavrollo"),
            (std::vector<TextView>{u"MenuAbout", u"menuContact", u"MenuParam", u"menuDebug",
                                   u"menuCodeBarre", u"MenuMAJ"}));
}

TEST(MenuTree, NamesASubmenuBeforeItsEntries) {
  std::set<TextView> known{kMenuName};
  for (const MenuEntry& entry : menuEntries()) {
    EXPECT_TRUE(known.contains(entry.parent));
    if (entry.kind == MenuEntryKind::Submenu) known.insert(entry.name);
  }
}

TEST(MenuTree, FindsAnEntryByItsExactName) {
  ASSERT_TRUE(menuEntry(u"menuAide"));
  EXPECT_EQ(menuEntry(u"menuAide")->caption, u" Aide Tavrollo");
  EXPECT_EQ(menuEntry(u"MenuAide"), nullptr);
  EXPECT_EQ(menuEntry(u""), nullptr);
}

TEST(MenuTree, ImageListHolds24KeysInStoredOrder) {
  EXPECT_EQ(listed(imageListKeys()),
            (std::vector<TextView>{u"agenda",   u"synchro", u"webAdmin",   u"update",   u"mail",
                                   u"webUser",  u"info",    u"regedit",    u"aide",     u"close",
                                   u"excel",    u"wordpad", u"notepad",    u"word",     u"cmd",
                                   u"explorer", u"calc",    u"alarm",      u"timehide", u"backup",
                                   u"web",      u"infos",   u"parametres", u"CodeBarre"}));
}

TEST(MenuTree, BitmapsAreAttachedInTheOrderOfStart) {
  EXPECT_EQ(
      listed(bitmapKeysInStartOrder()),
      (std::vector<TextView>{u"close", u"aide", u"synchro", u"explorer", u"webUser", u"webAdmin",
                             u"infos", u"mail", u"parametres", u"CodeBarre", u"update", u"excel",
                             u"word", u"notepad", u"wordpad", u"cmd", u"regedit"}));
}

TEST(MenuTree, EachBitmapBelongsToOneEntryAndToTheImageList) {
  const std::vector<TextView> images = listed(imageListKeys());
  for (const TextView key : bitmapKeysInStartOrder()) {
    EXPECT_EQ(std::count_if(menuEntries().begin(), menuEntries().end(),
                            [&](const MenuEntry& entry) { return entry.bitmapKey == key; }),
              1);
    EXPECT_EQ(std::count(images.begin(), images.end(), key), 1);
  }
  const auto withBitmap =
      std::count_if(menuEntries().begin(), menuEntries().end(),
                    [](const MenuEntry& entry) { return !entry.bitmapKey.empty(); });
  EXPECT_EQ(static_cast<std::size_t>(withBitmap), bitmapKeysInStartOrder().size());
}

TEST(MenuLock, LocksFiveEntriesInOrderAndNegatesItsArgument) {
  for (const bool asked : {true, false}) {
    std::vector<std::pair<TextView, bool>> set;
    bool lock = asked;
    lockMenu(lock, [&](TextView name, bool enabled) { set.emplace_back(name, enabled); });
    EXPECT_EQ(lock, !asked);
    EXPECT_EQ(set, (std::vector<std::pair<TextView, bool>>{{u"MenuTavrollo", !asked},
                                                           {u"MenuWebAdmin", !asked},
                                                           {u"MenuExplorer", !asked},
                                                           {u"MenuWin", !asked},
                                                           {u"MenuSynchro", !asked}}));
  }
}

TEST(MenuLock, CoversEntriesOfTheMenuOnly) {
  for (const TextView name : lockedEntries()) EXPECT_TRUE(menuEntry(name));
  EXPECT_EQ(lockedEntries().size(), 5u);
}
