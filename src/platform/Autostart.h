// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/Failure.h"

// Whether the user's session starts the program, as the system itself keeps and shows it: nothing
// else remembers it, so that the desktop's own switch and ours are one.
class Autostart {
 public:
  virtual ~Autostart() = default;

  // True when the next session will start the program.
  virtual bool isOn() = 0;

  virtual Failure set(bool on) = 0;
};
