// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/DefaultBrowser.h"
#include "platform/Questions.h"

// Asks, when Firefox does not open web links, whether it should. False when the program is to end.
bool checkDefaultBrowser(DefaultBrowser& browser, Questions& questions);
