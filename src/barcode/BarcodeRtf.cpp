// SPDX-License-Identifier: GPL-3.0-or-later
#include "barcode/BarcodeRtf.h"

#include <cstdio>

#include "text/AnsiCodePage.h"
#include "text/Paths.h"

namespace {

// A byte of the code page as RTF writes it.
std::string rtfCharacter(char byte) {
  if (byte == '\\' || byte == '{' || byte == '}') return {'\\', byte};
  const auto value = static_cast<unsigned char>(byte);
  constexpr unsigned char kLastOfAscii = 0x7E;
  if (value >= ' ' && value <= kLastOfAscii) return {byte};
  char hexadecimal[] = "\\'00";
  std::snprintf(hexadecimal, sizeof hexadecimal, "\\'%02x", static_cast<unsigned>(value));
  return hexadecimal;
}

}  // namespace

std::string exportedRtf(TextView fontString) {
  std::string document =
      "{\\rtf1\\ansi\\ansicpg1252\\deff0\\deflang1036{\\fonttbl{\\f0\\fswiss\\fprq2\\fcharset0 "
      "Arial;}{\\f1\\fnil\\fcharset2 Code EAN13;}{\\f2\\fswiss\\fcharset0 Arial;}}"
      "{\\*\\generator Msftedit 5.41.15.1515;}\\viewkind4\\uc1\\pard\\f0\\fs24 Votre code barre "
      ":\\par \\par"
      "\\f1\\fs72 ";
  document += toAnsi(fontString);
  document += "\\f0\\fs20\\par \\par Tavrollo\\f2\\par}";
  document += '\0';
  return document + "\r\n";
}

std::string copiedRtf(TextView fontString, TextView family, std::int16_t points) {
  std::string document = "{\\rtf1\\ansi\\ansicpg1252\\deff0{\\fonttbl{\\f0\\fnil\\fcharset0 " +
                         toAnsi(family) + ";}}\\f0\\fs" + std::to_string(2 * points) + " ";
  for (const char byte : toAnsi(fontString)) document += rtfCharacter(byte);
  return document + "}";
}

Text exportPath(const Text& programFolder) { return programFolder + nativePath(u"\\temp.rtf"); }
