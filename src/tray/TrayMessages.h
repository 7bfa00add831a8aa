// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "text/Text.h"
#include "windows/SplashTexts.h"

// What the tray tells the program, and the tip the program gives the tray. Messages arrive as mouse
// moves over the hidden main window: the message's number is the place of the move.

inline constexpr int kLeftButtonDown = 513;
inline constexpr int kLeftButtonUp = 514;
inline constexpr int kLeftDoubleClick = 515;
inline constexpr int kRightButtonDown = 516;
inline constexpr int kRightButtonUp = 517;

inline constexpr std::size_t kTipLength = 64;

// The tip's fixed field: "Tavrollo V1.4.67" padded with blanks to 64 characters, or cut there.
Text tipText(const ProgramVersion& version);

// The message that arrives as a mouse move to `x` twips.
int trayMessage(double x, double twipsPerPixel);

// True for the messages that pop the menu up.
bool popsMenuUp(int message);
