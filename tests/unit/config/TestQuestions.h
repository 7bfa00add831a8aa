// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <deque>
#include <vector>

#include "platform/Questions.h"

// Keeps every box that was shown and gives the answers that were laid down for it, in order; a box
// without one gets its default answer.
class TestQuestions : public Questions {
 public:
  explicit TestQuestions(std::deque<Answer> laidDown = {}) : answers(std::move(laidDown)) {}

  Answer ask(const Box& box) override {
    shown.push_back(box);
    if (answers.empty()) return box.defaultAnswer;
    const Answer answer = answers.front();
    answers.pop_front();
    return answer;
  }

  std::deque<Answer> answers;
  std::vector<Box> shown;
};
