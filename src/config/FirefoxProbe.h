// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/DefaultBrowser.h"
#include "platform/Questions.h"

// A diagnosis: whether the system knows Firefox as an application.
Box firefoxProbeBox(bool exists);

// Asks the system and shows the answer.
void probeFirefox(DefaultBrowser& browser, Questions& questions);
