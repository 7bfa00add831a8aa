// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QColor>

#include "windows/Contrast.h"

inline Colour fromQt(const QColor& colour) {
  return {static_cast<std::uint8_t>(colour.red()), static_cast<std::uint8_t>(colour.green()),
          static_cast<std::uint8_t>(colour.blue())};
}

inline QColor toQt(Colour colour) { return {colour.red, colour.green, colour.blue}; }
