// SPDX-License-Identifier: GPL-3.0-or-later
#include "barcode/BarcodeOptions.h"

#include "barcode/ModcodeBarre.h"
#include "text/Numbers.h"

std::span<const BarcodeOption> barcodeOptions() {
  using namespace ModcodeBarre;
  static constexpr BarcodeOption kOptions[] = {
      {.shownFont = u"Code 3 de 9", .font = u"Code 3 de 9", .type = kCode39},
      {.shownFont = u"Code3 de 9 Lab", .font = u"Code 3 de 9 Lab", .type = kCode39},
      {.shownFont = u"Code EAN13", .font = u"Code EAN13", .type = kEan13, .hasAddOn = true},
      {.shownFont = u"Code EAN13 (idem EAN8)",
       .font = u"Code EAN13",
       .type = kEan8,
       .hasAddOn = true},
      {.shownFont = u"Code 2 of 5 interleaved",
       .font = u"Code 2 of 5 interleaved",
       .type = kInterleaved2of5,
       .hasCheckBox = true},
      {.shownFont = u"Code 128", .font = u"Code 128", .type = kCode128},
  };
  return kOptions;
}

std::optional<std::int16_t> typedFontSize(TextView typed, const LocaleData& locale) {
  constexpr std::int16_t kLargest = 2160;  // thirty inches, as for any text
  const std::optional<std::int16_t> size = toInt16(typed, locale);
  if (!size || *size < 1 || *size > kLargest) return std::nullopt;
  return size;
}
