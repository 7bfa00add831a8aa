// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <optional>
#include <vector>

#include "text/Text.h"

// A message box as data: made by pure functions in the room that asks, shown by Questions.
enum class BoxIcon { None, Critical, Question, Exclamation, Information };
enum class BoxButtons { Ok, OkCancel, YesNo, YesNoCancel };
enum class Answer { Ok, Cancel, Yes, No };

struct Box {
  Text title;
  Text text;  // line breaks as they are in the system's texts: CR LF, LF or CR
  BoxIcon icon = BoxIcon::None;
  BoxButtons buttons = BoxButtons::Ok;
  Answer defaultAnswer = Answer::Ok;

  bool operator==(const Box&) const = default;
};

// The box for a run-time error in a handler: "Erreur dans " and the handler's name, a line break,
// and what happened.
Box errorBox(TextView handler, TextView description);

// What a file-open dialog is to show: a request as data, like a box.
struct FileRequest {
  Text title;
  Text filterLabel;
  Text pattern;      // for names, with * and ?; a closing ".*" also takes names without an ending
  Text startFolder;  // where it does not exist, the nearest folder above it; "" the dialog's own

  bool operator==(const FileRequest&) const = default;
};

// What a folder dialog is to show.
struct FolderRequest {
  Text title;
  Text startFolder;  // as above

  bool operator==(const FolderRequest&) const = default;
};

// What a file-save dialog is to show.
struct SaveRequest {
  struct Kind {
    Text label;
    Text ending;  // of a name, without its dot

    bool operator==(const Kind&) const = default;
  };

  Text title;
  std::vector<Kind> kinds;  // the first one is offered
  Text name;                // offered, without an ending

  bool operator==(const SaveRequest&) const = default;
};

// Asks the user.
class Questions {
 public:
  virtual ~Questions() = default;

  // The answer is one of the box's buttons.
  virtual Answer ask(const Box& box) = 0;

  // The full path of one existing file; nothing when the user cancels.
  virtual std::optional<Text> chooseFile(const FileRequest& request) = 0;

  // The full path of one existing folder; nothing when the user cancels.
  virtual std::optional<Text> chooseFolder(const FolderRequest& request) = 0;

  // The full path of a file to be written, with the ending of the kind that was chosen where the
  // user gave none; what stands there may be replaced. Nothing when the user cancels.
  virtual std::optional<Text> chooseNewFile(const SaveRequest& request) = 0;
};
