// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/Questions.h"

// Asks for a folder. The one chosen, with a separator at its end; `defaultPath` unchanged when the
// user cancels.
// Qt does this on every system: on Windows its dialog is the system's own folder picker.
Text ChoisirDossier(const Text& title, const Text& defaultPath, Questions& questions);
