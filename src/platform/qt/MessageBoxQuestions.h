// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/Questions.h"

// Shows boxes as message windows. Yes/No boxes have no way out but their buttons, as the system's
// own boxes; in the others Escape and the title bar's close box mean Cancel, or OK where it is
// alone.
class MessageBoxQuestions : public Questions {
 public:
  Answer ask(const Box& box) override;

  // The desktop's own dialogs, where it has them. Qt does this on every system: on Windows its
  // dialog for a file stands for the open-file record with flags 4100, since the file must exist
  // and there is no box for reading only.
  std::optional<Text> chooseFile(const FileRequest& request) override;
  std::optional<Text> chooseFolder(const FolderRequest& request) override;
  std::optional<Text> chooseNewFile(const SaveRequest& request) override;
};
