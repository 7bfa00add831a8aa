// SPDX-License-Identifier: GPL-3.0-or-later
#include "config/OptionsApply.h"

#include "config/ConfigFile.h"
#include "config/OptionsBoxes.h"
#include "config/ShortcutStore.h"
#include "platform/Files.h"
#include "text/Numbers.h"
#include "text/Split.h"

Applied applyOptions(const OptionsEntries& entries, const OptionsTarget& target) {
  if (!FileExists(entries.cookiesPath)) {
    const bool again = target.questions.ask(cookieStoreRejectedBox()) == Answer::Yes;
    return again ? Applied::Rejected : Applied::Ended;
  }

  Settings& settings = target.settings;
  settings.pollInterval =
      toInt32(entries.pollInterval, target.locale).value_or(settings.pollInterval);
  target.setInterval(settings.pollInterval);
  settings.cookiesPath = trim(entries.cookiesPath);
  settings.browser = entries.browser.value_or(settings.browser);

  RecConfig(target.programFolder, settings, target.locale, target.questions);
  RecShortQrCode(settings, target.shortcuts, target.questions);
  return Applied::Saved;
}
