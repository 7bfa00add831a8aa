// SPDX-License-Identifier: GPL-3.0-or-later
#include "config/FirefoxProbe.h"

Box firefoxProbeBox(bool exists) {
  return {.title = u"Tavrollo", .text = exists ? u"Existe !" : u"N'existe pas"};
}

void probeFirefox(DefaultBrowser& browser, Questions& questions) {
  questions.ask(firefoxProbeBox(RegExists(browser, kFirefoxApplication)));
}
