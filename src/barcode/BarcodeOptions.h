// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <optional>
#include <span>

#include "text/LocaleData.h"
#include "text/Text.h"

// What the barcode window's list of types chooses from.
struct BarcodeOption {
  TextView shownFont;  // what the window calls the font
  TextView font;       // the font's family
  std::uint8_t type;   // CodeBar's
  bool hasAddOn = false;
  bool hasCheckBox = false;  // a check digit is left to the user
};

// In the order of the window's option buttons.
std::span<const BarcodeOption> barcodeOptions();

// The size in points at which the preview begins.
inline constexpr std::int16_t kUsualFontSize = 36;

// A font size as typed, in points (1 to 2160). Nothing for what is none.
std::optional<std::int16_t> typedFontSize(TextView typed, const LocaleData& locale);
