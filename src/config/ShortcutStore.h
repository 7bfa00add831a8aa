// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "config/Settings.h"
#include "config/ShortcutTable.h"
#include "platform/Failure.h"
#include "platform/Questions.h"
#include "text/LocaleData.h"

// The shortcut table's file: where it stands, loading it with all that can be wrong, writing it.

enum class ShortcutLoad {
  Loaded,   // the table holds what the file held
  Created,  // there was no usable file; the user wanted a new table and has it
  Ended,    // there was none and the user wanted none, or what stands there could not be backed up:
            // the program is to end
};

// Where the table stands when the settings name no other place.
Text defaultShortcutPath(const Text& programFolder);

// Installs the example table at the default place, when there is an example and nothing stands
// there. A failure is silent: the loader will meet it.
void MAJshortQrCodeJs(const Text& programFolder);

// Loads `table` from the path in `settings`, which becomes the default one where nothing stands at
// it. Asks the user what to do when the table cannot be read; a file that a new one is to replace
// is backed up first.
ShortcutLoad loadShortcuts(Settings& settings, ShortcutTable& table, const Text& programFolder,
                           const LocaleData& locale, Questions& questions);

// Writes `table` at the path in `settings`; shows a box and answers false when that fails, with the
// old file left whole. A table that was never loaded is not written: false, without a box.
bool RecShortQrCode(const Settings& settings, const ShortcutTable& table, Questions& questions);

// The grid's caption: how many shortcuts there are.
Text shortcutCaption(std::size_t count);

// Copies the table's file to the first free numbered backup.
Failure backUpShortcuts(const Settings& settings, const Text& programFolder);

// The first of the numbered backups, beside the default table, at which nothing stands yet.
Text nextBackupPath(const Text& programFolder);
