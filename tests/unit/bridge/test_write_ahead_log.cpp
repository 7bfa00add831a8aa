// SPDX-License-Identifier: GPL-3.0-or-later
#include "bridge/WriteAheadLog.h"

#include <gtest/gtest.h>

#include "unit/bridge/LogBytes.h"
#include "unit/bridge/StoreFolder.h"

namespace {

constexpr std::uint32_t kPage = 512;
constexpr std::size_t kHead = 32;
constexpr std::size_t kFrame = 24 + kPage;

std::string page(char c) { return std::string(kPage, c); }

// Where the content of the frame of this number (from 0) lies.
std::uint64_t contentOf(std::size_t frame) { return kHead + frame * kFrame + 24; }

class WriteAheadLogTest : public testing::Test {
 protected:
  void write(std::string_view bytes) {
    path_ = folder_.write(u"store-wal", bytes);
    EXPECT_FALSE(file_.open(path_));
  }

  WriteAheadLog logOf(std::string_view bytes, std::uint32_t pageSize = kPage) {
    write(bytes);
    WriteAheadLog log;
    EXPECT_FALSE(log.index(file_, pageSize));
    return log;
  }

  StoreFolder folder_;
  Text path_;
  SharedFile file_;
};

}  // namespace

TEST_F(WriteAheadLogTest, TheNewestCommittedFrameOfAPageCounts) {
  for (const bool bigEndian : {true, false}) {
    const WriteAheadLog log = logOf(LogBytes(kPage, 7, bigEndian)
                                        .frame(1, page('a'), 0)
                                        .frame(2, page('b'), 4)
                                        .frame(2, page('c'), 5)
                                        .bytes());
    EXPECT_EQ(log.pageCount(), 5u);
    EXPECT_EQ(log.offsetOf(1), contentOf(0));
    EXPECT_EQ(log.offsetOf(2), contentOf(2));
    EXPECT_EQ(log.offsetOf(3), std::nullopt);
    EXPECT_EQ(log.offsetOf(0), std::nullopt);
  }
}

TEST_F(WriteAheadLogTest, FramesBehindTheLastCommitDoNotCount) {
  const WriteAheadLog log =
      logOf(LogBytes(kPage, 7).frame(1, page('a'), 3).frame(1, page('b'), 0).bytes());
  EXPECT_EQ(log.pageCount(), 3u);
  EXPECT_EQ(log.offsetOf(1), contentOf(0));
  const WriteAheadLog none = logOf(LogBytes(kPage, 7).frame(1, page('a'), 0).bytes());
  EXPECT_EQ(none.pageCount(), 0u);
  EXPECT_EQ(none.offsetOf(1), std::nullopt);
}

TEST_F(WriteAheadLogTest, FramesOfAnEarlierGenerationDoNotCount) {
  const std::string before = LogBytes(kPage, 1)
                                 .frame(1, page('a'), 9)
                                 .frame(2, page('b'), 9)
                                 .frame(3, page('c'), 9)
                                 .bytes();
  std::string now = LogBytes(kPage, 2).frame(1, page('d'), 4).bytes();
  now += before.substr(now.size());
  const WriteAheadLog log = logOf(now);
  EXPECT_EQ(log.pageCount(), 4u);
  EXPECT_EQ(log.offsetOf(1), contentOf(0));
  EXPECT_EQ(log.offsetOf(2), std::nullopt);
}

TEST_F(WriteAheadLogTest, ATornLogCountsToItsLastWholeCommit) {
  const std::string whole = LogBytes(kPage, 7)
                                .frame(1, page('a'), 3)
                                .frame(2, page('b'), 0)
                                .frame(1, page('c'), 4)
                                .frame(3, page('d'), 5)
                                .bytes();
  for (std::size_t length = 0; length <= whole.size(); ++length) {
    const WriteAheadLog log = logOf(whole.substr(0, length));
    const std::size_t frames = length < kHead ? 0 : (length - kHead) / kFrame;
    const std::uint32_t pages[] = {0, 3, 3, 4, 5};
    ASSERT_EQ(log.pageCount(), pages[frames]) << length;
    ASSERT_EQ(log.offsetOf(2).has_value(), frames >= 3) << length;
    ASSERT_EQ(log.offsetOf(3).has_value(), frames >= 4) << length;
  }
}

TEST_F(WriteAheadLogTest, AFlippedByteEndsTheLogInFrontOfItsCommit) {
  const std::string whole = LogBytes(kPage, 7)
                                .frame(1, page('a'), 3)
                                .frame(2, page('b'), 0)
                                .frame(1, page('c'), 4)
                                .bytes();
  for (std::size_t at = 0; at < whole.size(); ++at) {
    std::string damaged = whole;
    damaged[at] = static_cast<char>(damaged[at] ^ 0x10);
    const WriteAheadLog log = logOf(damaged);
    // The checkpoint's number is under the header's checksum like everything else.
    const std::uint32_t expected = at < kHead + kFrame ? 0 : 3;
    ASSERT_EQ(log.pageCount(), expected) << at;
  }
}

TEST_F(WriteAheadLogTest, WhatIsNoLogForThisStoreIsEmpty) {
  const std::string good = LogBytes(kPage, 7).frame(1, page('a'), 3).bytes();
  EXPECT_EQ(logOf("").pageCount(), 0u);
  EXPECT_EQ(logOf(good.substr(0, 31)).pageCount(), 0u);
  EXPECT_EQ(logOf(page('x') + page('x')).pageCount(), 0u);
  EXPECT_EQ(logOf(good, 1024).pageCount(), 0u);
  EXPECT_EQ(logOf(good).pageCount(), 3u);
}

TEST_F(WriteAheadLogTest, AFrameForPageZeroEndsTheLog) {
  const WriteAheadLog log = logOf(LogBytes(kPage, 7)
                                      .frame(1, page('a'), 3)
                                      .frame(0, page('b'), 4)
                                      .frame(2, page('c'), 5)
                                      .bytes());
  EXPECT_EQ(log.pageCount(), 3u);
}

TEST_F(WriteAheadLogTest, IndexingAgainForgetsWhatWas) {
  WriteAheadLog log = logOf(LogBytes(kPage, 7).frame(1, page('a'), 3).bytes());
  write("");
  EXPECT_FALSE(log.index(file_, kPage));
  EXPECT_EQ(log.pageCount(), 0u);
  EXPECT_EQ(log.offsetOf(1), std::nullopt);
}

TEST_F(WriteAheadLogTest, ANewCommitOrGenerationShows) {
  const std::string before =
      LogBytes(kPage, 1).frame(1, page('a'), 9).frame(2, page('b'), 9).bytes();
  std::string current = LogBytes(kPage, 2).frame(1, page('c'), 4).bytes();
  const std::string longer =
      LogBytes(kPage, 2).frame(1, page('c'), 4).frame(2, page('d'), 4).bytes();
  const std::string stale = current + before.substr(current.size());

  const struct {
    std::string seen;
    std::string now;
    bool unchanged;
  } rows[] = {
      {"", "", true},
      {"", current, false},
      {current, current, true},
      {current, longer, false},  // a commit at the end
      {stale, stale, true},
      {stale, longer, false},   // a commit over stale frames, at the same size
      {stale, before, false},   // another generation
      {stale, current, false},  // cut
      {current, "", false},
      {current, current.substr(0, 31), false},
      {"no log at all", "no log at all", true},
      {"no log at all", "no log at aLl", false},
  };
  for (const auto& row : rows) {
    const WriteAheadLog log = logOf(row.seen);
    write(row.now);
    EXPECT_EQ(log.unchanged(file_), row.unchanged) << row.seen.size() << " " << row.now.size();
  }
}

TEST_F(WriteAheadLogTest, LostCommitsAreToldFromALogStartedAfresh) {
  const std::string one = LogBytes(kPage, 1).frame(1, page('a'), 9).bytes();
  const std::string two = LogBytes(kPage, 1).frame(1, page('a'), 9).frame(2, page('b'), 9).bytes();
  const std::string fresh = LogBytes(kPage, 2).frame(1, page('c'), 9).bytes();
  std::string badFrame = two;
  badFrame[contentOf(1)] = 'x';
  std::string badHeader = two;
  badHeader[17] = 'x';

  const struct {
    std::string earlier;
    std::string now;
    bool wentBack;
  } rows[] = {
      {two, two, false},
      {one, two, false},
      {two, one, true},
      {two, badFrame, true},
      {two, badHeader, true},
      {two, fresh, false},
      {two, "", false},
      {two, two.substr(0, 1), true},
      {two, two.substr(0, 32), true},
      {"", badHeader, false},
      {LogBytes(kPage, 1).bytes(), badHeader, false},
      {fresh, one, false},
  };
  for (const auto& row : rows) {
    const WriteAheadLog earlier = logOf(row.earlier);
    EXPECT_EQ(logOf(row.now).wentBackSince(earlier), row.wentBack)
        << row.earlier.size() << " " << row.now.size();
  }
}
