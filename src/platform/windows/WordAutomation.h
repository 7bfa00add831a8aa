// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/Failure.h"

// Asks the word processor that answers to "word.basic" to show itself ("AppShow") and to open the
// document ("FileOpen"). 429 where none answers.
Failure openThroughWordBasic(const Text& document);
