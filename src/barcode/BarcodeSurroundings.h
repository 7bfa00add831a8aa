// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>

#include "barcode/ModcodeBarre.h"
#include "platform/Questions.h"
#include "platform/Shell.h"
#include "text/LocaleData.h"

// What the barcode window works with.
struct BarcodeSurroundings {
  const Text& programFolder;  // without a trailing separator
  const LocaleData& locale;
  Shell& shell;
  Questions& questions;
  std::function<Text()> fontPage;  // the address of the page about the fonts

  // As ModcodeBarre::CodeBarInto.
  std::function<void(Text& result, std::uint8_t type, TextView source, TextView addOn,
                     bool withCheck)>
      encode = ModcodeBarre::CodeBarInto;
};
