// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/Background.h"
#include "platform/Guarded.h"

#include <gtest/gtest.h>

#include "support/Doubles.h"

TEST(Guarded, WhatAHandlerThrowsBecomesTheBoxThatNamesIt) {
  Journal journal;
  ScriptedQuestions questions(journal);
  questions.answers = {Answer::Ok};
  guarded(questions, u"menuAide_Click", [] { throw std::runtime_error("panne\xC3\xA9"); });
  EXPECT_EQ(questions.boxes, std::vector<Box>{errorBox(u"menuAide_Click", u"panneé")});
}

TEST(Guarded, AHandlerThatThrowsNothingShowsNothing) {
  Journal journal;
  ScriptedQuestions questions(journal);
  bool ran = false;
  guarded(questions, u"x", [&] { ran = true; });
  EXPECT_TRUE(ran);
  EXPECT_EQ(journal, Journal());
}

TEST(InBackground, WhatIsThrownBecomesALineOfTheTrace) {
  TraceBuffer trace;
  inBackground(trace, [] { throw std::runtime_error("panne"); });
  ASSERT_EQ(trace.messages().size(), 1u);
  EXPECT_EQ(trace.messages().back(), u"erreur panne");
}
