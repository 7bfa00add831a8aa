// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <optional>

#include "platform/Failure.h"
#include "platform/Questions.h"

// What the barcode window says.

// The help on a topic: 0 Code 39, 1 EAN, 2 Interleaved 2 of 5, 3 Code 128, 4 the fonts. `fontPage`
// is the address of the page about the fonts. Nothing for another topic.
std::optional<Box> barcodeHelpBox(int topic, TextView fontPage);

namespace failures {
Failure missingFont(TextView family);  // when the program was built without its fonts
Failure printingCancelled();           // 32755
Failure printerRefused();              // 482
Failure barcodeTooLarge();             // for the page or the picture
}  // namespace failures
