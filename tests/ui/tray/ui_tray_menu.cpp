// SPDX-License-Identifier: GPL-3.0-or-later
#include <QAction>
#include <QMenu>
#include <QPushButton>
#include <QSignalSpy>
#include <vector>

#include "platform/qt/QtText.h"
#include "tray/MenuTree.h"
#include "tray/MenuWindow.h"
#include "tray/TrayMenu.h"
#include "ui/UiMain.h"
#include "windows/qt/Assets.h"

namespace {

std::set<TextView> everyCommand() {
  std::set<TextView> names;
  for (const MenuEntry& entry : menuEntries()) {
    if (entry.kind == MenuEntryKind::Command) names.insert(entry.name);
  }
  return names;
}

// A tray menu that keeps what was chosen in it.
struct Tray {
  explicit Tray(const std::set<TextView>& available = everyCommand()) : menu(available, chooser()) {
    menu.attachBitmaps();
  }
  std::function<void(TextView)> chooser() {
    return [this](TextView name) { chosen.emplace_back(name); };
  }
  QAction& action(TextView name) {
    const QList<QMenu*> menus = menu.menu().findChildren<QMenu*>() << &menu.menu();
    for (QMenu* inMenu : menus) {
      for (QAction* found : inMenu->actions()) {
        if (found->objectName() == toQt(name)) return *found;
      }
    }
    throw std::runtime_error("no such entry");
  }
  QMenu& submenu(TextView name) { return *action(name).menu(); }

  std::vector<Text> chosen;
  TrayMenu menu;
};

// Opens a submenu and leaves it open.
void openInside(QMenu& outer, QAction& entry) {
  QTest::mouseClick(&outer, Qt::LeftButton, {}, outer.actionGeometry(&entry).center());
  ASSERT_TRUE(waitUntil([&] { return entry.menu()->isVisible(); }));
}

}  // namespace

TEST(TrayMenu, ShowsEveryEntryWithItsCaptionInOrder) {
  Tray tray;
  EXPECT_EQ(tray.menu.menu().objectName(), QStringLiteral("MenuIcon"));
  EXPECT_EQ(tray.menu.menu().title(), QStringLiteral("Menu"));

  std::map<TextView, int> place;
  for (const MenuEntry& entry : menuEntries()) {
    QMenu& parent = entry.parent == kMenuName ? tray.menu.menu() : tray.submenu(entry.parent);
    ASSERT_LT(place[entry.parent], parent.actions().size());
    const QAction* shown = parent.actions().at(place[entry.parent]++);
    EXPECT_EQ(shown->objectName(), toQt(entry.name));
    EXPECT_EQ(shown->text(), toQt(entry.caption));
    EXPECT_EQ(shown->isSeparator(), entry.kind == MenuEntryKind::Separator);
    EXPECT_EQ(shown->menu() != nullptr, entry.kind == MenuEntryKind::Submenu);
  }
  for (const auto& [name, count] : place) {
    QMenu& parent = name == kMenuName ? tray.menu.menu() : tray.submenu(name);
    EXPECT_EQ(parent.actions().size(), count);
  }
}

TEST(TrayMenu, HidesTheEntryWithoutACaption) {
  Tray tray;
  for (const MenuEntry& entry : menuEntries()) {
    EXPECT_EQ(tray.action(entry.name).isVisible(), entry.name != u"MenuEnlev");
  }
}

TEST(TrayMenu, ShowsAnImageWhereTheTableNamesOne) {
  Tray tray;
  for (const MenuEntry& entry : menuEntries()) {
    QAction& action = tray.action(entry.name);
    EXPECT_EQ(action.icon().isNull(), entry.bitmapKey.empty());
    if (entry.bitmapKey.empty()) continue;
    EXPECT_TRUE(action.isIconVisibleInMenu());
    EXPECT_EQ(action.icon().pixmap(16, 16).toImage(),
              imageOfKey(entry.bitmapKey).pixmap(16, 16).toImage());
  }
}

TEST(TrayMenu, ShowsItsImagesOnDesktopsThatShowNoneInMenus) {
  QApplication::setAttribute(Qt::AA_DontShowIconsInMenus);
  Tray tray;
  for (const MenuEntry& entry : menuEntries()) {
    EXPECT_EQ(tray.action(entry.name).isIconVisibleInMenu(), !entry.bitmapKey.empty())
        << toQt(entry.name).toStdString();
  }
  QApplication::setAttribute(Qt::AA_DontShowIconsInMenus, false);
}

TEST(TrayMenu, AttachesTheBitmapsInTheOrderOfStart) {
  TrayMenu menu(everyCommand(), [](TextView) {});
  std::vector<QString> order;
  for (const MenuEntry& entry : menuEntries()) {
    if (entry.kind != MenuEntryKind::Command) continue;
    auto* action = menu.menu().findChild<QAction*>(toQt(entry.name));
    QObject::connect(action, &QAction::changed, action, [&order, action] {
      if (order.empty() || order.back() != action->objectName()) {
        order.push_back(action->objectName());
      }
    });
  }
  menu.attachBitmaps();
  ASSERT_EQ(order.size(), bitmapKeysInStartOrder().size());
  for (std::size_t i = 0; i < order.size(); ++i) {
    EXPECT_EQ(menuEntry(fromQt(order[i]))->bitmapKey, bitmapKeysInStartOrder()[i]);
  }
  order.clear();
  menu.setBitmap(u"");
  EXPECT_TRUE(order.empty()) << "no key is no key of an entry";
}

TEST(Assets, HaveAPictureOfItsOwnForEveryKeyOfTheImageList) {
  std::vector<QImage> seen;
  for (const TextView key : imageListKeys()) {
    const QImage image = imageOfKey(key).pixmap(32, 32).toImage();
    ASSERT_FALSE(image.isNull());
    for (const QImage& other : seen) EXPECT_NE(image, other) << toQt(key).toStdString();
    seen.push_back(image);
  }
  EXPECT_TRUE(imageOfKey(u"nothing").isNull());
}

TEST(TrayMenu, DisablesTheCommandsThatAreNotAvailable) {
  Tray tray({u"MenuAbout", u"MenuQuit"});
  for (const MenuEntry& entry : menuEntries()) {
    if (entry.kind != MenuEntryKind::Command) continue;
    EXPECT_EQ(tray.action(entry.name).isEnabled(),
              entry.name == u"MenuAbout" || entry.name == u"MenuQuit");
  }
}

TEST(TrayMenu, TellsWhichEntryWasChosen) {
  Tray tray;
  QMenu& menu = tray.menu.menu();
  tray.menu.popUpAt({100, 100});
  ASSERT_TRUE(waitUntil([&] { return menu.isVisible(); }));
  QTest::mouseClick(&menu, Qt::LeftButton, {},
                    menu.actionGeometry(&tray.action(u"menuAide")).center());
  EXPECT_EQ(tray.chosen, (std::vector<Text>{u"menuAide"}));
  EXPECT_FALSE(menu.isVisible());

  for (const TextView name : everyCommand()) {
    tray.chosen.clear();
    tray.action(name).trigger();
    EXPECT_EQ(tray.chosen, (std::vector<Text>{Text(name)}));
  }
}

TEST(TrayMenu, EveryEntryIsReachedByTheKeyboard) {
  Tray tray;
  QMenu& menu = tray.menu.menu();
  const auto press = [](Qt::Key key) { QTest::keyClick(QApplication::activePopupWidget(), key); };
  // Down from the top of the entry's own menu to the entry; a submenu opens with its first entry.
  const std::function<void(TextView)> goTo = [&](TextView name) {
    const TextView parent = menuEntry(name)->parent;
    if (parent != kMenuName) {
      goTo(parent);
      press(Qt::Key_Right);
    } else {
      press(Qt::Key_Down);
    }
    for (const MenuEntry& each : menuEntries()) {
      if (each.parent != parent || each.kind == MenuEntryKind::Separator) continue;
      if (each.name == name) return;
      press(Qt::Key_Down);
    }
  };
  for (const MenuEntry& entry : menuEntries()) {
    if (entry.kind != MenuEntryKind::Command || entry.caption.empty()) continue;
    tray.chosen.clear();
    tray.menu.popUpAt({100, 100});
    ASSERT_TRUE(waitUntil([&] { return menu.isVisible(); }));
    goTo(entry.name);
    press(Qt::Key_Return);
    EXPECT_EQ(tray.chosen, (std::vector<Text>{Text(entry.name)}));
    ASSERT_TRUE(waitUntil([&] { return !menu.isVisible(); }));
  }
  tray.menu.popUpAt({100, 100});
  ASSERT_TRUE(waitUntil([&] { return menu.isVisible(); }));
  press(Qt::Key_Escape);
  EXPECT_FALSE(menu.isVisible());
}

TEST(TrayMenu, OpensOnceWhileItIsOpen) {
  Tray tray;
  QMenu& menu = tray.menu.menu();
  QSignalSpy opened(&menu, &QMenu::aboutToShow);
  tray.menu.popUpAt({100, 100});
  const QPoint place = menu.pos();
  tray.menu.popUpAt({300, 300});
  EXPECT_EQ(opened.count(), 1);
  EXPECT_EQ(menu.pos(), place);
  menu.close();
}

TEST(TrayMenu, LocksTheFiveEntriesAndNoOther) {
  Tray tray;
  for (const bool asked : {true, false}) {
    bool lock = asked;
    lockMenu(lock, [&](TextView name, bool enabled) { tray.menu.setEnabled(name, enabled); });
    for (const MenuEntry& entry : menuEntries()) {
      if (entry.kind == MenuEntryKind::Separator || entry.name == u"MenuEnlev") continue;
      const auto locked = lockedEntries();
      const bool administration =
          std::find(locked.begin(), locked.end(), entry.name) != locked.end();
      EXPECT_EQ(tray.action(entry.name).isEnabled(), !administration || !asked)
          << toQt(entry.name).toStdString();
    }
  }
}

TEST(TrayMenu, LockRulesOverWhatIsAvailable) {
  Tray tray(std::set<TextView>{});
  bool lock = false;
  lockMenu(lock, [&](TextView name, bool enabled) { tray.menu.setEnabled(name, enabled); });
  for (const TextView name : lockedEntries()) EXPECT_TRUE(tray.action(name).isEnabled());
  EXPECT_FALSE(tray.action(u"MenuParam").isEnabled());
}

TEST(TrayMenu, LockingClosesWhatIsOpenInside) {
  Tray tray;
  QMenu& menu = tray.menu.menu();
  tray.menu.popUpAt({100, 100});
  ASSERT_TRUE(waitUntil([&] { return menu.isVisible(); }));
  openInside(menu, tray.action(u"MenuWin"));
  openInside(tray.submenu(u"MenuWin"), tray.action(u"MenuOutils"));

  bool lock = true;
  lockMenu(lock, [&](TextView name, bool enabled) { tray.menu.setEnabled(name, enabled); });
  EXPECT_FALSE(tray.submenu(u"MenuWin").isVisible());
  EXPECT_FALSE(tray.submenu(u"MenuOutils").isVisible());
  EXPECT_TRUE(menu.isVisible());

  // What is locked does not answer to a click any more.
  QTest::mouseClick(&menu, Qt::LeftButton, {},
                    menu.actionGeometry(&tray.action(u"MenuExplorer")).center());
  EXPECT_TRUE(tray.chosen.empty());

  lock = false;
  lockMenu(lock, [&](TextView name, bool enabled) { tray.menu.setEnabled(name, enabled); });
  if (!menu.isVisible()) tray.menu.popUpAt({100, 100});
  ASSERT_TRUE(waitUntil([&] { return menu.isVisible(); }));
  openInside(menu, tray.action(u"MenuWin"));
  menu.close();
}

TEST(TrayMenu, UnlockingLeavesOpenWhatIsOpenInside) {
  Tray tray;
  tray.menu.popUpAt({100, 100});
  ASSERT_TRUE(waitUntil([&] { return tray.menu.menu().isVisible(); }));
  openInside(tray.menu.menu(), tray.action(u"MenuWin"));

  tray.menu.setEnabled(u"MenuWin", true);
  EXPECT_TRUE(tray.submenu(u"MenuWin").isVisible());
  tray.menu.menu().close();
}

TEST(TrayMenu, AnEntryThatItDoesNotHaveIsPassedOver) {
  Tray tray;
  tray.menu.setEnabled(u"MenuNobody", true);
  tray.menu.setEnabled(u"MenuWin", false);
  EXPECT_FALSE(tray.action(u"MenuWin").isEnabled());
}

TEST(MenuWindow, ButtonPopsTheMenuUp) {
  Tray tray;
  MenuWindow window(tray.menu);
  window.show();
  ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));
  auto& button = control<QPushButton>(window, "cmdMenu");
  EXPECT_EQ(button.text(), QStringLiteral("Menu"));
  EXPECT_FALSE(button.icon().isNull());
  QTest::mouseClick(&button, Qt::LeftButton);
  EXPECT_TRUE(waitUntil([&] { return tray.menu.menu().isVisible(); }));
  tray.menu.menu().close();

  window.activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
  EXPECT_EQ(QApplication::focusWidget(), &button);
  QTest::keyClick(&button, Qt::Key_Space);
  EXPECT_TRUE(waitUntil([&] { return tray.menu.menu().isVisible(); })) << "by the keyboard too";
  tray.menu.menu().close();
}

TEST(MenuWindow, ClosingItOnlyMinimisesIt) {
  Tray tray;
  MenuWindow window(tray.menu);
  window.show();
  ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));
  EXPECT_FALSE(window.close());
  EXPECT_TRUE(waitUntil([&] { return window.isMinimized(); }));
  EXPECT_FALSE(window.isHidden());
}
