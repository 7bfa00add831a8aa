// SPDX-License-Identifier: GPL-3.0-or-later
#include "config/StoredField.h"

#include <algorithm>

#include "text/StoredText.h"

std::string onOneLine(std::string bytes) {
  std::replace_if(
      bytes.begin(), bytes.end(), [](char byte) { return byte == '\r' || byte == '\n'; }, ' ');
  return bytes;
}

std::string storedField(TextView text) { return onOneLine(toStoredText(text)); }
