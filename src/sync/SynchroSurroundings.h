// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>

#include "config/Settings.h"
#include "platform/Questions.h"
#include "platform/Shell.h"
#include "text/LocaleData.h"

// What the synchronisation window works on, and what the main window does for it.
struct SynchroSurroundings {
  Settings& settings;
  const Text& programFolder;  // without a trailing separator
  const LocaleData& locale;
  Shell& shell;
  Questions& questions;

  std::function<void()> pumpEvents;
  std::function<void(const Text& line)> trace;
  std::function<void()> readShortcutsAgain;  // a backup's table became the live one
  std::function<void()> restartWatching;
};
