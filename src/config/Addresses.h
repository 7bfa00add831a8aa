// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "text/Text.h"

// Where the author and his pages are found. Whoever publishes Tavrollo puts his own here: the host
// is one that nobody owns. The page about the fonts is one of the web application.
namespace addresses {

inline constexpr TextView kAuthorMail = u"tavrollo@example.org";
inline constexpr TextView kUpdatePage = u"https://example.org/tavrollo/mise-a-jour.html";
inline constexpr TextView kFontPage = u"aide.html";

}  // namespace addresses
