// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <functional>
#include <span>

#include "text/Text.h"

// The tray menu as data.

enum class MenuEntryKind { Submenu, Command, Separator };

struct MenuEntry {
  TextView name;
  TextView caption;  // exact; leading blanks leave room for the bitmap
  MenuEntryKind kind;
  TextView parent;     // name of the submenu it stands in, or of the popup itself
  TextView bitmapKey;  // empty: no bitmap
};

// The popup itself: it is no entry of its own menu.
inline constexpr TextView kMenuName = u"MenuIcon";
inline constexpr TextView kMenuCaption = u"Menu";

// Every entry of the popup, in the order of declaration; a submenu comes before its entries.
std::span<const MenuEntry> menuEntries();

// The entry called `name`, or nothing.
const MenuEntry* menuEntry(TextView name);

// The keys of the main window's image list, in stored order.
std::span<const TextView> imageListKeys();

// The keys of the menu's bitmaps in the order in which they are attached at start.
std::span<const TextView> bitmapKeysInStartOrder();

// The administration entries, in the order in which a lock sets them.
std::span<const TextView> lockedEntries();

// The menu lock operation: negates `lock` in place and gives the negated value to the five
// administration entries as their enabled state. So true disables them, false enables them.
void lockMenu(bool& lock, const std::function<void(TextView name, bool enabled)>& setEnabled);
