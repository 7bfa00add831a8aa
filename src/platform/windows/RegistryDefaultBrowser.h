// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/DefaultBrowser.h"

// The registry, with keys and errors as the scripting host has them: "HKEY_CURRENT_USER\...\value",
// a key's default value with a separator at the end.
class RegistryDefaultBrowser : public DefaultBrowser {
 public:
  std::uint32_t RegRead(TextView key, Text& value) override;
  void RegWrite(TextView key, TextView value) override;
};
