// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QWidget>
#include <cstdint>

// Makes a window translucent: 0 invisible to 255 opaque. It may be done before the window is first
// shown. The answer is 0 when done, 1 when the opacity is out of range (then nothing changes), 2
// when the window system failed or `window` is no window of its own.
// Qt does this on every system: on Windows it makes the window a layered one.
int RendreTransparent(QWidget& window, std::int16_t opacity) noexcept;
