// SPDX-License-Identifier: GPL-3.0-or-later
#include "text/StoredText.h"

#include "text/AnsiCodePage.h"
#include "text/Utf.h"

std::string toStoredText(TextView text) {
  const std::optional<std::string> ansi = toAnsiExactly(text);
  if (ansi && !looksLikeUtf8(*ansi)) return *ansi;
  return toUtf8Lossless(text);
}

Text fromStoredText(std::string_view bytes) {
  return looksLikeUtf8(bytes) ? fromUtf8(bytes) : fromAnsi(bytes);
}
