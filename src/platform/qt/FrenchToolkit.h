// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

// From now on the toolkit's own words (its dialogs for folders and printers, the menus of its text
// boxes) are French, as all of ours are, whatever the desktop's language. They stay English where
// the toolkit's translations are not installed. To be called when the application is there.
void speakFrench();
