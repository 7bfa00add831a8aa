// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <string>

#include "text/Text.h"

// Barcodes as documents for a word processor.

// The exported document: the font string as it stands, always in the font "Code EAN13", a zero byte
// and a line end behind it.
std::string exportedRtf(TextView fontString);

// What goes to the clipboard: the font string alone, in its font, at `points`.
std::string copiedRtf(TextView fontString, TextView family, std::int16_t points);

// Where the exported document stands.
Text exportPath(const Text& programFolder);
