// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/StartUp.h"

#include "app/DefaultBrowserCheck.h"
#include "app/Relaunch.h"
#include "app/StartUpBoxes.h"
#include "app/WebPage.h"
#include "config/ConfigBoxes.h"
#include "config/ConfigFile.h"
#include "config/ShortcutStore.h"
#include "platform/Files.h"
#include "text/Numbers.h"
#include "text/Split.h"

namespace {

constexpr std::int32_t kDesignInterval = 1000;  // milliseconds

}  // namespace

bool StartUp::Form_Load(bool firstInstance, const Text& executablePath) {
  if (!firstInstance) {
    const bool relaunch = to_.questions.ask(alreadyRunningBox()) == Answer::Yes;
    if (relaunch) to_.shell.ShellExecute(relaunchRequest(executablePath));
    return false;
  }
  to_.host.addTrayIcon();
  to_.host.setUpNotice();
  to_.host.attachMenuBitmaps();
  return InitVar();
}

bool StartUp::InitVar() {
  Companion& companion = to_.companion;
  Settings& settings = companion.settings;

  MAJshortQrCodeJs(companion.programFolder);
  to_.reader.setCookieOffset(loadOffsetCookie(companion.programFolder));
  to_.reader.setAllowedHosts(readAllowedHosts(allowedHostsPath(companion.programFolder)));

  prepareForReading(settings, companion.programFolder);
  if (!readSettings()) {
    if (to_.questions.ask(configUnreadableBox()) == Answer::No) return false;
    // What was read may name another table by now, which the search's outcome would write over.
    if (companion.shortcuts.wasLoaded() && !loadTable()) return false;
    to_.host.searchCookieStore();
    return true;
  }
  if (!loadTable()) return false;
  to_.host.showSettings();

  if (!FileExists(settings.cookiesPath)) {
    const Box box = cookieStoreInaccessibleBox(settings.cookiesPath);
    if (to_.questions.ask(box) == Answer::No) return false;
    to_.host.MenuParam_Click();
    return true;
  }
  to_.watcher.noteStoreTime();
  to_.host.pumpEvents();
  to_.host.enableTimerFirstSearch();

  if (!checkDefaultBrowser(to_.browser, to_.questions)) return false;
  to_.shell.ShellExecute(webPageRequest(settings, u"res_css\\htm\\start.html"));
  to_.host.lockMenus(true);
  to_.host.MenuAbout_Click();
  return true;
}

// Reading the settings again leaves the changes that were not saved in the table.
bool StartUp::loadTable() {
  Companion& companion = to_.companion;
  const ShortcutTable& table = companion.shortcuts;
  if (table.wasLoaded() && table.source() == companion.settings.shortcutPath) return true;
  return loadShortcuts(companion.settings, companion.shortcuts, companion.programFolder,
                       companion.locale, to_.questions) != ShortcutLoad::Ended;
}

bool StartUp::readSettings() {
  std::string bytes;
  if (readFile(configPath(to_.companion.programFolder), bytes)) return false;
  Settings& settings = to_.companion.settings;
  const auto shortcutPathRead = [this] { checkShortcutPath(); };
  const bool whole = readConfig(bytes, to_.companion.locale, settings, shortcutPathRead);
  settings.cookiesPath = trim(settings.cookiesPath);

  if (settings.pollInterval <= 0) {
    to_.companion.trace.log(u"config.cfg : temporisation de " +
                            numberText(std::int64_t{settings.pollInterval}) +
                            u" ms refusée, 1000 ms prises à la place");
    settings.pollInterval = kDesignInterval;
  }
  return whole;
}

void StartUp::checkShortcutPath() {
  Settings& settings = to_.companion.settings;
  settings.shortcutPath = trim(settings.shortcutPath);
  if (FileExists(settings.shortcutPath)) return;
  settings.shortcutPath = defaultShortcutPath(to_.companion.programFolder);
  to_.questions.ask(shortcutPathInvalidBox(settings.shortcutPath));
}
