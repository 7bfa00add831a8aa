// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>

#include "config/ShortcutTable.h"
#include "text/LocaleData.h"

// shortQrCode.js: the shortcut table as a script that the web pages include. Positions in it count
// bytes. Keys are in the ANSI code page, names in UTF-8, addresses as stored texts.

// The whole file. A line break inside a field becomes a blank: one shortcut is one line.
std::string shortcutBytes(const ShortcutTable& table);

// Loads `table` from `bytes`. False, with the table left as it was, when the first line holds no
// number after its first "=", when the bytes end before FreeId entries or a line of another kind
// were met, or when an entry lacks the separator between name and address.
bool parseShortcuts(std::string_view bytes, ShortcutTable& table, const LocaleData& locale);
