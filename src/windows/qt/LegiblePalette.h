// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QPalette>

// What has to change in a desktop's colours so that every text can be read: those roles alone are
// set in the palette that is given. Toolkits and desktops ship pairs that cannot be: white on a
// light blue where something is selected, links in dark blue on a dark window.
QPalette legibleChanges(const QPalette& desktop);

// Makes these changes in the application's palette.
void makePaletteLegible();
