// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

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

// Asks the user; the answer is one of the box's buttons.
class Questions {
 public:
  virtual ~Questions() = default;
  virtual Answer ask(const Box& box) = 0;
};
