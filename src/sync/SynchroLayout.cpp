// SPDX-License-Identifier: GPL-3.0-or-later
#include "sync/SynchroLayout.h"

#include "sync/DifferenceGrid.h"

SynchroLayout synchroLayout(Twips wider, Twips higher) {
  const double half = wider / 2.0;
  const int pathColumn = kGridColumns[static_cast<std::size_t>(kSourceColumn)].width;
  return {.backupCountLeft = half + 9720,
          .backupPictureLeft = half + 8880,
          .backupFolderLeft = half + 9000,
          .closeLeft = wider + 14160.0,
          .closeTop = higher + 7920.0,
          .outcomeLeft = wider + 7800.0,
          .outcomeTop = higher + 8040.0,
          .gridWidth = wider + 15132.0,
          .gridHeight = higher + 5052.0,
          .pathColumnWidth = std::round(half + pathColumn)};
}
