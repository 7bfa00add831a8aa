// SPDX-License-Identifier: GPL-3.0-or-later
#include "barcode/ModcodeBarre.h"

#include <algorithm>
#include <array>

#include "barcode/Ean.h"

namespace {

// `text` with zeros in front of it up to `Size` characters; `text` has no more.
template <std::size_t Size>
std::array<char16_t, Size> zeroFilled(TextView text) {
  std::array<char16_t, Size> filled;
  filled.fill(u'0');
  std::copy_backward(text.begin(), text.end(), filled.end());
  return filled;
}

void appendAddOn(Text& text, TextView addOn) {
  if (addOn.size() == 1) {
    const auto filled = zeroFilled<2>(addOn);
    appendEanAddOn(text, {filled.data(), filled.size()});
  } else if (addOn.size() == 3 || addOn.size() == 4) {
    const auto filled = zeroFilled<kAddOnDigits>(addOn);
    appendEanAddOn(text, {filled.data(), filled.size()});
  } else {
    appendEanAddOn(text, addOn.substr(0, kAddOnDigits));
  }
}

template <std::size_t Size>
Text encodeEan(void (*append)(Text&, TextView), TextView source, TextView addOn) {
  if (source.size() > Size) addOn = source.substr(Size);
  const auto filled = zeroFilled<Size>(source.substr(0, Size));
  Text text;
  text.reserve(kLongestEan);
  append(text, {filled.data(), filled.size()});
  appendAddOn(text, addOn);
  return text;
}

}  // namespace

Text ModcodeBarre::CodeBar(std::uint8_t type, TextView source, TextView addOn, bool withCheck) {
  if (source.empty()) return {};
  switch (type) {
    case kCode39: return Code39(source);
    case kEan13: return encodeEan<kDigits13>(appendEan13, source, addOn);
    case kEan8: return encodeEan<kDigits8>(appendEan8, source, addOn);
    case kInterleaved2of5: return Interleaved2of5(source, withCheck);
    case kCode128: return Code128(source);
    default: return {};
  }
}
