// SPDX-License-Identifier: GPL-3.0-or-later
#include "barcode/ModcodeBarre.h"

#include "barcode/Encoders.h"

void ModcodeBarre::CodeBarInto(Text& result, std::uint8_t type, TextView source, TextView addOn,
                               bool withCheck) {
  if (source.empty()) return result.clear();
  switch (type) {
    case kCode39: return encodeCode39(result, source);
    case kEan13: return encodeEan13(result, source, addOn);
    case kEan8: return encodeEan8(result, source, addOn);
    case kInterleaved2of5: return encodeInterleaved2of5(result, source, withCheck);
    case kCode128: return encodeCode128(result, source);
    default: return result.clear();
  }
}

Text ModcodeBarre::CodeBar(std::uint8_t type, TextView source, TextView addOn, bool withCheck) {
  Text result;
  CodeBarInto(result, type, source, addOn, withCheck);
  return result;
}
