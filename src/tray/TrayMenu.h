// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QMenu>
#include <QObject>
#include <functional>
#include <set>

#include "text/Text.h"

// The tray menu on the screen, built from the menu's table. Actions and submenus bear the names of
// their entries. Qt does this on every system: on Windows too it draws the entries' bitmaps itself.
class TrayMenu : public QObject {
  Q_OBJECT

 public:
  // `available`: the commands that can be carried out; the others are shown disabled. `onCommand`
  // is given the name of the entry that was chosen.
  TrayMenu(const std::set<TextView>& available, std::function<void(TextView name)> onCommand,
           QObject* parent = nullptr);

  QMenu& menu() { return menu_; }

  // Attaches the image of `key` to the entry that bears it.
  void setBitmap(TextView key);

  // All bitmaps, in the order of start.
  void attachBitmaps();

  // Enables or disables an entry, also while the menu is open: what it holds then closes.
  void setEnabled(TextView name, bool enabled);

  // Pops the menu up, unless it is open already.
  void popUpAt(const QPoint& place);
  void popUpAtCursor();

 private:
  QAction* action(TextView name) const;

  QMenu menu_;
  std::function<void(TextView)> onCommand_;
};
