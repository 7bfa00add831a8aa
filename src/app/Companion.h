// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "bridge/TraceBuffer.h"
#include "config/Settings.h"
#include "config/ShortcutTable.h"
#include "text/LocaleData.h"
#include "text/Text.h"

// The program's state: the one settings record, the one trace, the one shortcut table. Everything
// else is handed references to it.
struct Companion {
  Text programFolder;  // without a trailing separator
  LocaleData locale;   // of the desktop
  Settings settings;
  TraceBuffer trace;
  ShortcutTable shortcuts;
};
