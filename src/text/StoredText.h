// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "text/Text.h"

// How a path or an address is kept in config.cfg and in the shortcut table: in the ANSI code page,
// as those files always were, or in UTF-8 where the code page cannot hold it or would be misread.

std::string toStoredText(TextView text);
Text fromStoredText(std::string_view bytes);
