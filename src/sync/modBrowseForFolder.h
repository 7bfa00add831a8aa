// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/Questions.h"

// Asks for a folder. The one chosen, with a separator at its end; `defaultPath` unchanged when the
// user cancels.
Text ChoisirDossier(const Text& title, const Text& defaultPath, Questions& questions);
