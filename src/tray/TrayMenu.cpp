// SPDX-License-Identifier: GPL-3.0-or-later
#include "tray/TrayMenu.h"

#include <QCursor>
#include <utility>

#include "platform/qt/QtText.h"
#include "tray/MenuTree.h"
#include "tray/TrayManager.h"
#include "windows/qt/Assets.h"

namespace {

QMenu& submenu(QMenu& root, TextView name) {
  return name == kMenuName ? root : *root.findChild<QMenu*>(toQt(name));
}

QAction* addEntry(QMenu& menu, const MenuEntry& entry) {
  switch (entry.kind) {
    case MenuEntryKind::Submenu: {
      QMenu* inner = menu.addMenu(toQt(entry.caption));
      inner->setObjectName(toQt(entry.name));
      inner->setAccessibleName(toQt(entry.caption));
      return inner->menuAction();
    }
    case MenuEntryKind::Separator: return menu.addSeparator();
    case MenuEntryKind::Command: break;
  }
  return menu.addAction(toQt(entry.caption));
}

}  // namespace

TrayMenu::TrayMenu(const std::set<TextView>& available,
                   std::function<void(TextView name)> onCommand, QObject* parent)
    : QObject(parent), menu_(toQt(kMenuCaption)), onCommand_(std::move(onCommand)) {
  menu_.setObjectName(toQt(kMenuName));
  menu_.setAccessibleName(toQt(kMenuCaption));
  for (const MenuEntry& entry : menuEntries()) {
    QAction* made = addEntry(submenu(menu_, entry.parent), entry);
    made->setObjectName(toQt(entry.name));
    if (entry.kind != MenuEntryKind::Command) continue;

    made->setEnabled(available.contains(entry.name));
    // An entry without a caption would be an empty line at the menu's end.
    made->setVisible(!entry.caption.empty());
    connect(made, &QAction::triggered, this, [this, name = entry.name] { onCommand_(name); });
  }
}

QAction* TrayMenu::action(TextView name) const {
  if (QMenu* inner = menu_.findChild<QMenu*>(toQt(name))) return inner->menuAction();
  return menu_.findChild<QAction*>(toQt(name));
}

void TrayMenu::setBitmap(TextView key) {
  for (const MenuEntry& entry : menuEntries()) {
    if (key.empty() || entry.bitmapKey != key) continue;
    QAction* bearer = action(entry.name);
    bearer->setIcon(imageOfKey(key));
    bearer->setIconVisibleInMenu(true);
  }
}

void TrayMenu::attachBitmaps() {
  for (const TextView key : bitmapKeysInStartOrder()) setBitmap(key);
}

void TrayMenu::setEnabled(TextView name, bool enabled) {
  QAction* entry = action(name);
  if (!entry) return;
  entry->setEnabled(enabled);
  if (enabled || !entry->menu()) return;

  for (QMenu* inner : entry->menu()->findChildren<QMenu*>()) inner->hide();
  entry->menu()->hide();
}

void TrayMenu::popUpAt(const QPoint& place) {
  if (menu_.isVisible()) return;
  menu_.popup(place);
  menuPoppedUp(menu_);
}

void TrayMenu::popUpAtCursor() { popUpAt(QCursor::pos()); }
