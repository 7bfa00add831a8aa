// SPDX-License-Identifier: GPL-3.0-or-later
// config.cfg: any bytes are read without harm, and numbers that were read can be written and read
// again.
#include <cstddef>

#include "Demand.h"
#include "config/ConfigFile.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view bytes(reinterpret_cast<const char*>(data), size);
  Settings settings;
  int calls = 0;
  const bool read = readConfig(bytes, frenchLocale(), settings, [&calls] { ++calls; });
  demand(calls <= 1, "the shortcut table's path is told once");
  if (!read) return 0;
  demand(calls == 1, "the shortcut table's path is told when all was read");

  demand(settings.notifications >= 0 && settings.notifications <= 2, "the notifications are known");

  // Texts are never quoted, so that not each of them survives: the numbers alone are compared.
  settings.cookiesPath.clear();
  settings.shortcutPath.clear();
  settings.backupPath.clear();
  Settings again;
  demand(readConfig(configBytes(settings, frenchLocale()), frenchLocale(), again, {}),
         "what was read can be written and read");
  demand(again == settings, "numbers stay the same");
  return 0;
}
