// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>
#include <string>

#include "config/Settings.h"
#include "platform/Questions.h"
#include "text/LocaleData.h"

// config.cfg: the settings as a text file of 23 lines in the program folder, each value behind a
// comment that says what it is. The reader goes strictly by position and knows no comments.

// Where the settings stand.
Text configPath(const Text& programFolder);

// What the settings are before config.cfg is read: the shortcut table at its default place and both
// scales at 567; everything else keeps its value.
void prepareForReading(Settings& settings, const Text& programFolder);

// The whole file. A line break inside a value becomes a blank, so that every value keeps its line.
std::string configBytes(const Settings& settings, const LocaleData& locale);

// Reads the items of `bytes` into `settings`. False when the file ends before the last item or when
// a number does not convert; what was read until then stays in the record.
// `shortcutPathRead` is called as soon as `settings.shortcutPath` was read, before the later items;
// it may replace it.
bool readConfig(std::string_view bytes, const LocaleData& locale, Settings& settings,
                const std::function<void()>& shortcutPathRead);

// Writes config.cfg in the program folder; shows a box and answers false when that fails, with the
// old file left whole.
bool RecConfig(const Text& programFolder, const Settings& settings, const LocaleData& locale,
               Questions& questions);
