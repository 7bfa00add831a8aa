// SPDX-License-Identifier: GPL-3.0-or-later
#include <algorithm>
#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <vector>

#include "platform/linux/FileBytes.h"
#include "platform/linux/FileDescriptor.h"
#include "support/Mounted.h"
#include "support/Processes.h"
#include "support/Scratch.h"

namespace {

std::string someBytes(std::size_t size) {
  std::string bytes(size, ' ');
  for (std::size_t i = 0; i < size; ++i) bytes[i] = static_cast<char>(i * 7 + i / 251);
  return bytes;
}

class FileBytes : public ::testing::Test {
 protected:
  BytesCopied copy(std::uint64_t size, CopyWays ways) { return copyUsing(size, ways); }

  // `ways` are what is still worth trying afterwards.
  BytesCopied copyUsing(std::uint64_t size, CopyWays& ways) {
    const FileDescriptor from(::open(scratch.path("from").c_str(), O_RDONLY | O_CLOEXEC));
    const FileDescriptor to(
        ::open(scratch.path("to").c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600));
    calls.clear();
    return copyFileBytes(from.number(), to.number(), size, ways, [this](std::uint64_t bytes) {
      calls.push_back(bytes);
      return bytes < stopAt;
    });
  }

  Scratch scratch;
  std::vector<std::uint64_t> calls;
  std::uint64_t stopAt = UINT64_MAX;
};

constexpr CopyWays kWays[] = {
    {.clone = true, .inKernel = true},
    {.clone = false, .inKernel = true},
    {.clone = false, .inKernel = false},
};

TEST_F(FileBytes, EveryWayGivesTheSameBytes) {
  for (const std::size_t size : {0u, 1u, 262'143u, 262'144u, 262'145u, 9'000'001u}) {
    const std::string bytes = someBytes(size);
    scratch.write("from", bytes);
    for (const CopyWays& ways : kWays) {
      EXPECT_EQ(copy(size, ways), BytesCopied::All) << size;
      EXPECT_TRUE(scratch.read("to") == bytes) << size;
    }
  }
}

TEST_F(FileBytes, WhatTheSourceHasGrownByIsLeft) {
  scratch.write("from", someBytes(5000));
  for (const CopyWays& ways : {kWays[1], kWays[2]}) {
    EXPECT_EQ(copy(1000, ways), BytesCopied::All);
    EXPECT_EQ(scratch.read("to"), someBytes(1000));
  }
}

TEST_F(FileBytes, ASourceThatEndsTooSoonIsTold) {
  scratch.write("from", someBytes(1000));
  for (const CopyWays& ways : {kWays[1], kWays[2]}) {
    EXPECT_EQ(copy(1001, ways), BytesCopied::SourceEnded);
  }
}

TEST_F(FileBytes, TheCallsBeginWithNothingAndEndWithAll) {
  scratch.write("from", someBytes(9'000'000));
  for (const CopyWays& ways : {kWays[1], kWays[2]}) {
    copy(9'000'000, ways);
    EXPECT_EQ(calls.front(), 0u);
    EXPECT_EQ(calls.back(), 9'000'000u);
    EXPECT_TRUE(std::is_sorted(calls.begin(), calls.end()));
    EXPECT_GE(calls.size(), 4u);
  }
}

TEST_F(FileBytes, ACallStopsTheCopy) {
  scratch.write("from", someBytes(9'000'000));
  stopAt = 1;
  for (const CopyWays& ways : {kWays[1], kWays[2]}) {
    EXPECT_EQ(copy(9'000'000, ways), BytesCopied::Stopped);
    EXPECT_EQ(calls.size(), 2u);
  }
  stopAt = 0;
  EXPECT_EQ(copy(9'000'000, kWays[0]), BytesCopied::Stopped);
  EXPECT_EQ(scratch.read("to"), "");
}

TEST_F(FileBytes, AFullDiskIsAFailureAndNoReasonToTryAnotherWay) {
  const Mounted disk(scratch.path(), "size=64k");
  if (!disk) GTEST_SKIP() << kMayNotMount;
  scratch.write("from", someBytes(40'000));
  for (const CopyWays& ways : {kWays[1], kWays[2]}) {
    EXPECT_EQ(copy(40'000, ways), BytesCopied::Failed);
    EXPECT_EQ(errno, ENOSPC);
  }
}

TEST_F(FileBytes, AFileThatIsTooLargeIsAFailureAndNoReasonToTryAnotherWay) {
  scratch.write("from", someBytes(40'000));
  CopyWays ways = kWays[1];
  EXPECT_EQ(copyUsing(1000, ways), BytesCopied::All);
  const bool inKernel = ways.inKernel;  // whether this kernel does it here
  const int status = inChild([&] {
    std::signal(SIGXFSZ, SIG_IGN);
    const rlimit tight{1000, 1000};
    if (::setrlimit(RLIMIT_FSIZE, &tight) != 0) return 2;
    if (copyUsing(40'000, ways) != BytesCopied::Failed || errno != EFBIG) return 1;
    return ways.inKernel == inKernel ? 0 : 3;
  });
  EXPECT_EQ(status, 0);
}

}  // namespace
