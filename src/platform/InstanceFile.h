// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>
#include <string_view>

#include "platform/System.h"

// What the instance that holds the lock leaves in the lock's file, on every system: its process and
// its program folder, one a line. A name that is no valid UTF-8 keeps its bytes.

std::string instanceFileText(const RunningInstance& instance);

// The reverse. Nothing is known of an instance whose text is not whole (it is being written): its
// process is 0. A folder alone may be missing.
RunningInstance parseInstanceFile(std::string_view bytes);
