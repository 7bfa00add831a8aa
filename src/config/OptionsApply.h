// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <functional>
#include <optional>

#include "config/Settings.h"
#include "config/ShortcutTable.h"
#include "platform/Questions.h"
#include "text/LocaleData.h"

// Applying the options window: its entries become settings and both files are written.

// What the controls hold that are taken only when the window is applied.
struct OptionsEntries {
  Text cookiesPath;
  Text pollInterval;                    // milliseconds, as typed
  std::optional<std::int16_t> browser;  // nothing while neither is chosen
};

struct OptionsTarget {
  Settings& settings;
  const ShortcutTable& shortcuts;
  const Text& programFolder;
  const LocaleData& locale;
  Questions& questions;
  std::function<void(std::int32_t)> setInterval;  // of the running watcher, in milliseconds
};

enum class Applied {
  Saved,     // the settings are taken; a file that could not be written had its box
  Rejected,  // no readable cookie store: nothing was taken, the user wants to choose again
  Ended,     // the same, and the user wants to end the program
};

Applied applyOptions(const OptionsEntries& entries, const OptionsTarget& target);
