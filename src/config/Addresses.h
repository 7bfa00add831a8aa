// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "text/Text.h"

// Where the author and his pages are found. Whoever publishes Tavrollo puts his own here: the host
// is one that nobody owns.
namespace addresses {

inline constexpr TextView kAuthorMail = u"tavrollo@example.org";
inline constexpr TextView kUpdatePage = u"https://example.org/tavrollo/mise-a-jour.html";

}  // namespace addresses
