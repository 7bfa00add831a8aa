// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <vector>

#include "platform/Failure.h"
#include "text/Text.h"

// Brings a program folder that was filled earlier up to date with the installed template.
//
// What was installed last is noted in the folder (fichiers_installes.txt, one digest for each
// file), and that tells what the user did since:
//   - a file that is as it was installed gets the template's new version,
//   - one that the user changed, or put there, or made a link of, stays,
//   - one that the user deleted stays away,
//   - one that the template did not have before arrives,
//   - what the template does not have any more stays.
// Of rwCookies.js the first line is the user's key: it stays, and the rest is what counts.
//
// Each file is replaced whole, and the note is written last: an update that was interrupted is
// finished at the next start.
struct FolderUpdate {
  struct NotDone {
    Text path;
    Failure failure;
  };

  // Paths in the program folder, with slashes.
  std::vector<Text> arrived;
  std::vector<Text> replaced;
  std::vector<Text> kept;  // the template has another version than the user's own one
  std::vector<NotDone> notDone;
};

// `templateFolder` "" or the program folder itself: nothing is done. Both without a trailing
// separator.
FolderUpdate updateProgramFolder(const Text& folder, const Text& templateFolder);

// What is told of it in the trace, one line each; none when nothing is worth telling.
std::vector<Text> updateLines(const FolderUpdate& update);
