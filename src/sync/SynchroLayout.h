// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "windows/Twips.h"

// Where the synchronisation window's controls go when it grows: the backup's side moves with half
// of what was gained, the table gets all of it and its two path columns share it.

// The size for which the window was drawn; it is never smaller. With its frame it has room on a
// screen of 1024 by 600 pixels.
inline constexpr Twips kSynchroWidth = 15315;
inline constexpr Twips kSynchroHeight = 8490;

struct SynchroLayout {
  double backupCountLeft;    // labNbre, element 2
  double backupPictureLeft;  // Picture1, element 1
  double backupFolderLeft;   // labDir, element 2
  double closeLeft;          // cmdClose
  double closeTop;
  double outcomeLeft;  // labIdem
  double outcomeTop;
  double gridWidth;  // Grid
  double gridHeight;
  double pathColumnWidth;  // of columns 1 and 5, whole
};

// The places, in twips, in a window that is so much wider and higher than it was drawn.
SynchroLayout synchroLayout(Twips wider, Twips higher);
