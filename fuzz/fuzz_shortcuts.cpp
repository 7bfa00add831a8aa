// SPDX-License-Identifier: GPL-3.0-or-later
// shortQrCode.js: any bytes are read without harm; a table that was not read stays as it was.
#include <cstddef>

#include "Demand.h"
#include "config/ShortcutFile.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view bytes(reinterpret_cast<const char*>(data), size);
  ShortcutTable table;
  if (!parseShortcuts(bytes, table, frenchLocale())) {
    demand(!table.wasLoaded() && table.rows().empty() && table.freeId() == 0,
           "a table that was not read stays as it was");
    return 0;
  }
  demand(table.wasLoaded(), "a table that was read is loaded");
  const std::string written = shortcutBytes(table);
  demand(!written.empty(), "a table can be written");
  return 0;
}
