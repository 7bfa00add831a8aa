// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

#include "text/Text.h"

// The user's settings: one record, owned by the program's state, shared by the reader and the
// writer of config.cfg and by every window that shows or changes them.
struct Settings {
  std::int16_t browser = 0;          // 0 Firefox, 1 Google Chrome
  Text cookiesPath;                  // the watched browser's cookie store
  std::int32_t pollInterval = 1000;  // milliseconds between two looks at it
  Text shortcutPath;                 // shortQrCode.js
  double scaleX = 567.0;             // drawing units per centimetre
  double scaleY = 567.0;
  std::int16_t notifications = 1;  // 0 none, 1 shown, 2 neither said (kept as it is)
  Text backupPath;                 // the last backup folder

  bool operator==(const Settings&) const = default;
};
