// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/DefaultBrowserCheck.h"

#include "app/StartUpBoxes.h"
#include "text/CaseFold.h"

namespace {

bool namesFirefox(DefaultBrowser& browser, TextView key) {
  return toLower(readRegister(browser, key)).find(u"firefox") != Text::npos;
}

}  // namespace

bool checkDefaultBrowser(DefaultBrowser& browser, Questions& questions) {
  if (namesFirefox(browser, kHttpOpenCommand)) return true;
  if (namesFirefox(browser, kHttpUserChoice)) return true;
  switch (questions.ask(firefoxDefaultBox())) {
    case Answer::Cancel: return false;
    case Answer::Yes: browser.RegWrite(kHttpOpenCommand, kFirefoxOpenCommand); return true;
    default: return true;
  }
}
