// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/Questions.h"

// Shows boxes as message windows. Yes/No boxes have no way out but their buttons, as the system's
// own boxes; in the others Escape and the title bar's close box mean Cancel, or OK where it is
// alone.
class MessageBoxQuestions : public Questions {
 public:
  Answer ask(const Box& box) override;

  // The desktop's own dialogs, where it has them.
  std::optional<Text> chooseFile(const FileRequest& request) override;
  std::optional<Text> chooseFolder(const FolderRequest& request) override;
  std::optional<Text> chooseNewFile(const SaveRequest& request) override;
};
