// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/System.h"
#include "text/Text.h"

// The short name of the running system: the settings window shows it, and the folder in which a
// cookie store is looked for depends on it.

// The label of a version; one that is not known is told by its numbers: "Unknown (4.6.1)".
Text osVersionLabel(const SystemVersion& version);

// True for the label of a Windows that osVersionLabel knows.
bool isKnownWindows(TextView label);

// The label of the running system, asked anew at every call.
Text modGetOsVersion();
