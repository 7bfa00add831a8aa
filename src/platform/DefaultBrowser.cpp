// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/DefaultBrowser.h"

Text readRegister(DefaultBrowser& browser, TextView key) {
  Text value;
  return browser.RegRead(key, value) == 0 ? value : Text();
}

bool RegExists(DefaultBrowser& browser, TextView key) {
  Text value;
  const std::uint32_t error = browser.RegRead(key, value);
  return error != kRegistryFileNotFound && error != kRegistryPathNotFound;
}
