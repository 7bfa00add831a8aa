// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

// What RendreTransparent answers.
inline constexpr int kOpacityDone = 0;
inline constexpr int kOpacityOutOfRange = 1;
inline constexpr int kOpacityPlatformError = 2;

// True for an opacity a window can have: 0 invisible to 255 opaque.
inline bool isOpacity(std::int16_t opacity) { return opacity >= 0 && opacity < 256; }

// The opacity as the part of 1 that the window system takes.
inline double opacityLevel(std::int16_t opacity) { return opacity / 255.0; }
