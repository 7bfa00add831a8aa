// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <functional>

#include "config/Settings.h"
#include "config/ShortcutTable.h"
#include "platform/Autostart.h"
#include "platform/Questions.h"
#include "platform/Shell.h"
#include "text/LocaleData.h"

// What the options window and its pages work on, and what the main window does for them.
struct OptionsSurroundings {
  Settings& settings;
  ShortcutTable& shortcuts;
  const Text& programFolder;  // without a trailing separator
  const LocaleData& locale;
  Shell& shell;
  Questions& questions;

  std::function<void(std::int32_t)> setInterval;  // of the running watcher, in milliseconds
  std::function<void()> restartWatching;
  std::function<void()> pumpEvents;
  std::function<void()> InitVar;  // reads the settings again
  std::function<void()> MenuAbout_Click;
  std::function<void()> endProgram;

  std::function<void()> checkInstallation = {};  // empty: the diagnosis is not offered
  Autostart* autostart = nullptr;                // null: the session's start is not offered
};
