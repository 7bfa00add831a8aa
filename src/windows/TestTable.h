// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "config/ShortcutTable.h"
#include "platform/Failure.h"
#include "text/LocaleData.h"
#include "text/Text.h"

// What the test window reads of the shortcut table. Names and addresses are shown as the byte text
// that stands in the file, so that the window's own buttons can decode them.

struct TestTable {
  std::optional<std::int32_t> freeId;  // of the first line, once it was read
  std::vector<Shortcut> rows;
  Failure failure;  // what stopped the reading; the rows are those in front of it

  bool operator==(const TestTable&) const = default;
};

// Reads line by line, until FreeId entries were read or a line is none.
TestTable readTestTable(std::string_view bytes, const LocaleData& locale);
