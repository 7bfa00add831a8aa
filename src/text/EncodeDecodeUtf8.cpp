// SPDX-License-Identifier: GPL-3.0-or-later
#include "text/EncodeDecodeUtf8.h"

#include <algorithm>

#include "text/AnsiCodePage.h"
#include "text/Utf.h"

namespace EncodeDecodeUtf8 {

int GetACP() { return 1252; }

Text multiByteToText(std::string_view bytes, int codePage) {
  bytes = bytes.substr(0, bytes.find('\0'));
  return codePage == kCodePageUtf8 ? fromUtf8(bytes) : fromAnsi(bytes);
}

std::string textToMultiByte(TextView text, int codePage) {
  text = text.substr(0, text.find(u'\0'));
  return codePage == kCodePageUtf8 ? toUtf8(text) : toAnsi(text);
}

Text decode(TextView byteText) {
  if (byteText.empty()) return {};
  Text text = multiByteToText(textToMultiByte(byteText, kCodePageAnsi), kCodePageUtf8);
  removeZeroCharacters(text);
  return text;
}

Text encode(TextView text) {
  if (text.empty()) return {};
  Text byteText = multiByteToText(textToMultiByte(text, kCodePageUtf8), kAskForCodePage);
  removeZeroCharacters(byteText);
  return byteText;
}

void removeZeroCharacters(Text& text) { std::erase(text, u'\0'); }

}  // namespace EncodeDecodeUtf8
