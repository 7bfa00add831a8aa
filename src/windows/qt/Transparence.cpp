// SPDX-License-Identifier: GPL-3.0-or-later
#include "windows/qt/Transparence.h"

#include "windows/Opacity.h"

int RendreTransparent(QWidget& window, std::int16_t opacity) noexcept {
  if (!isOpacity(opacity)) return kOpacityOutOfRange;
  if (!window.isWindow()) return kOpacityPlatformError;
  try {
    window.setWindowOpacity(opacityLevel(opacity));
  } catch (...) {
    return kOpacityPlatformError;
  }
  return kOpacityDone;
}
