// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <optional>
#include <string_view>

// Cuts the bytes of config.cfg into items. Blanks in front of an item are skipped. An item that
// begins with a double quote runs to the next one; any other ends at the first comma or at the end
// of its line, LF or CR LF.
class ItemReader {
 public:
  explicit ItemReader(std::string_view bytes) : rest_(bytes) {}

  // The next item; nothing when the bytes end before it is complete. The end of the bytes completes
  // an item that has begun, since it ends the last line, but not a quoted one.
  std::optional<std::string_view> next();

 private:
  std::optional<std::string_view> nextQuoted();
  std::string_view nextPlain();
  void skipBlanks();
  void skipSeparator();

  std::string_view rest_;
};
