// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/DefaultBrowser.h"

// The default browser of a freedesktop.org desktop, asked and set through its xdg tools. The value
// of a key is a launcher's name ("firefox-esr.desktop") where Windows has a command.
class XdgDefaultBrowser : public DefaultBrowser {
 public:
  std::uint32_t RegRead(TextView key, Text& value) override;

  // Whatever is written to kHttpOpenCommand, the installed Firefox becomes the browser.
  void RegWrite(TextView key, TextView value) override;
};
