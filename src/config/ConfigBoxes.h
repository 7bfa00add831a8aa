// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/Questions.h"

// The boxes about config.cfg, the cookie store it names and the shortcut table.

// config.cfg could not be read: go on (Yes) or end the program (No).
Box configUnreadableBox();

// config.cfg could not be written.
Box configWriteFailedBox();

// The shortcut table that config.cfg names is missing; `defaultPath` is used instead.
Box shortcutPathInvalidBox(const Text& defaultPath);

// The cookie store is missing: change the settings (Yes) or end the program (No).
Box cookieStoreInaccessibleBox(const Text& cookiesPath);

// Nothing stands at the shortcut table's path when it is loaded; `defaultPath` is used instead.
Box shortcutsNotFoundBox(const Text& defaultPath);

// The shortcut table could not be read: create a new one (Yes), or not.
Box createShortcutsBox();

// No new shortcut table was wanted; the program ends after it.
Box shortcutsMissingBox();

// The shortcut table could not be written.
Box shortcutsWriteFailedBox();

// Before the shortcut table is edited by hand.
Box editShortcutsBox();
