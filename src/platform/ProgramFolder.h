// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <optional>

#include "platform/Failure.h"
#include "text/Text.h"

// The program folder holds everything that is the user's: config.cfg, offsetCookie.dat, nav/, the
// templates. Paths to it carry no trailing separator.

// `asked` (from --program-folder; a relative path counts from the current folder), else the
// executable's folder when it is writable and holds nav/ or config.cfg (a portable installation),
// else Tavrollo in the user's home.
Text chooseProgramFolder(const std::optional<Text>& asked, const Text& executableFolder,
                         const Text& home);

// The installed template that a new program folder is filled from: share/tavrollo beside the
// executable's folder (bin) or one step above that (libexec/tavrollo), or "template" beside the
// executable in a build tree. "" when missing.
Text templateFolder(const Text& executableFolder);

// Fills a program folder that has no nav/ from the template. What stands there is never
// overwritten; an interrupted filling leaves no half nav/ behind.
Failure fillProgramFolder(const Text& folder, const Text& templateFolder);
