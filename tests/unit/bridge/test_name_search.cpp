// SPDX-License-Identifier: GPL-3.0-or-later
#include "bridge/NameSearch.h"

#include <gtest/gtest.h>

#include <random>
#include <string>

TEST(NameSearch, FindsTheNameAtEveryPlaceOfEveryLength) {
  const std::string name(kCookieName);
  for (std::size_t size = 0; size < 600; size += size < 300 ? 1 : 37) {
    const std::string without(size, 'T');
    ASSERT_EQ(findCookieName(without, 0), std::string::npos);
    for (std::size_t at = 0; at + name.size() <= size; ++at) {
      std::string bytes = without;
      bytes.replace(at, name.size(), name);
      ASSERT_EQ(findCookieName(bytes, 0), at) << size;
      ASSERT_EQ(findCookieName(bytes, at), at) << size;
      ASSERT_EQ(findCookieName(bytes, at + 1), std::string::npos) << size;
    }
  }
}

TEST(NameSearch, FindsWhatAPlainSearchFindsInRandomPiecesOfTheName) {
  std::mt19937 random(7);
  for (int round = 0; round < 2000; ++round) {
    std::string bytes;
    while (bytes.size() < 500) {
      const std::size_t from = random() % kCookieName.size();
      bytes += kCookieName.substr(from, 1 + random() % kCookieName.size());
    }
    for (std::size_t at = 0; at != std::string::npos;) {
      const std::size_t expected = bytes.find(kCookieName, at);
      ASSERT_EQ(findCookieName(bytes, at), expected);
      at = expected == std::string::npos ? expected : expected + 1;
    }
  }
}

TEST(NameSearch, BeyondTheEndThereIsNothing) {
  EXPECT_EQ(findCookieName("", 0), std::string::npos);
  EXPECT_EQ(findCookieName("", 5), std::string::npos);
  EXPECT_EQ(findCookieName(kCookieName, 15), std::string::npos);
  EXPECT_EQ(findCookieName(kCookieName, 0), 0u);
}
