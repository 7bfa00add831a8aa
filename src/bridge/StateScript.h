// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <string>

#include "platform/Failure.h"
#include "text/Text.h"

// What the pages are told after each value that was handled: the script res_css\js\etat.js below
// the web application's root. They load it to see that a command made the whole way.
struct BridgeState {
  std::int64_t counter = 0;   // values handled since the program started
  Text lastField;             // of the value, decoded
  std::int32_t interval = 0;  // between two looks at the store, milliseconds
  Text version;
  Text time;  // dd/mm/yyyy hh:mm:ss
};

// One line of JavaScript, in ASCII: var tavrolloEtat={…};
std::string stateScript(const BridgeState& state);

Failure writeStateScript(const Text& webApplicationRoot, const BridgeState& state);
