// SPDX-License-Identifier: GPL-3.0-or-later
#include "bridge/TraceBuffer.h"

#include <gtest/gtest.h>

TEST(TraceBuffer, StartsEmptyAndBeginsWithAnEmptyLine) {
  TraceBuffer trace;
  EXPECT_EQ(trace.text(), u"");
  trace.log(u"CookieValue est nul");
  EXPECT_EQ(trace.text(), u"\r\nCookieValue est nul");
  trace.log(u"");
  trace.log(u"t(0)=ini");
  EXPECT_EQ(trace.text(), u"\r\nCookieValue est nul\r\n\r\nt(0)=ini");
}

TEST(TraceBuffer, OneMessageMayHoldSeveralLines) {
  TraceBuffer trace;
  trace.log(u"cookie trouvé :\r\nini_|_");
  ASSERT_EQ(trace.messages().size(), 1u);
  EXPECT_EQ(trace.messages().front(), u"cookie trouvé :\r\nini_|_");
}

TEST(TraceBuffer, ObserversGetEachMessageFromThenOn) {
  TraceBuffer trace;
  std::vector<Text> first;
  std::vector<Text> second;
  trace.log(u"before");
  trace.observe([&](const Text& message) { first.push_back(message); });
  trace.log(u"a");
  trace.observe([&](const Text& message) { second.push_back(message); });
  trace.log(u"b\r\nc");
  EXPECT_EQ(first, (std::vector<Text>{u"a", u"b\r\nc"}));
  EXPECT_EQ(second, std::vector<Text>{u"b\r\nc"});
}

TEST(TraceBuffer, AnObserverMayLogItself) {
  TraceBuffer trace;
  std::vector<Text> seen;
  trace.observe([&](const Text& message) {
    if (message == u"a") trace.log(u"b");
    seen.push_back(message);
  });
  trace.log(u"a");
  EXPECT_EQ(seen, (std::vector<Text>{u"b", u"a"}));
  EXPECT_EQ(trace.text(), u"\r\na\r\nb");
}

TEST(TraceBuffer, TheOldestMessagesGoWhenThereAreTooMany) {
  TraceBuffer trace;
  for (std::size_t i = 0; i < TraceBuffer::kMostMessages; ++i) trace.log(i == 0 ? u"first" : u"x");
  EXPECT_EQ(trace.messages().front(), u"first");
  trace.log(u"last");
  EXPECT_EQ(trace.messages().size(), TraceBuffer::kMostMessages);
  EXPECT_EQ(trace.messages().front(), u"x");
  EXPECT_EQ(trace.messages().back(), u"last");
}

TEST(TraceBuffer, TheOldestMessagesGoWhenTheyHoldTooManyCharacters) {
  TraceBuffer trace;
  const std::size_t half = TraceBuffer::kMostCharacters / 2;
  trace.log(Text(half, u'a'));
  trace.log(Text(half, u'b'));
  EXPECT_EQ(trace.messages().size(), 2u);
  trace.log(u"c");
  ASSERT_EQ(trace.messages().size(), 2u);
  EXPECT_EQ(trace.messages().front().front(), u'b');
}

TEST(TraceBuffer, AMessageLongerThanTheTraceIsCut) {
  TraceBuffer trace;
  trace.log(Text(TraceBuffer::kMostCharacters + 5, u'a'));
  ASSERT_EQ(trace.messages().size(), 1u);
  EXPECT_EQ(trace.messages().front().size(), TraceBuffer::kMostCharacters);
  trace.log(u"b");
  EXPECT_EQ(trace.text(), u"\r\nb");
}
