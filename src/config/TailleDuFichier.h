// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

#include "text/LocaleData.h"
#include "text/Text.h"

// The search for cookie stores has its own way to write a file's size; so it has its own room for
// the name.
namespace storesearch {

// `bytes` as a short text: "1024 octets", "1,00 Ko", "1,00 Mo", "1,00 Go". A unit is taken for
// what is more than 1024 of the one before: exactly 1024 Ko are still Ko.
Text TailleDuFichier(std::uint64_t bytes, const LocaleData& locale);

}  // namespace storesearch
