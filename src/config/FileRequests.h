// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

#include "platform/Questions.h"

// What the settings window's two file dialogs ask for.

// A cookie store of `browser` (0 Firefox, else Chrome).
FileRequest cookieFileRequest(std::int16_t browser, const Text& startFolder);

// A shortcut table; the dialog begins where the program's own one stands.
FileRequest shortcutFileRequest(const Text& programFolder);
