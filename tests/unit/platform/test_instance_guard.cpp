// SPDX-License-Identifier: GPL-3.0-or-later
#include <csignal>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/wait.h>

#include "platform/Files.h"
#include "platform/System.h"
#include "support/Processes.h"

namespace {

// Another process that holds the lock until it is ended.
class Holder {
 public:
  explicit Holder(const Text& folder) {
    int ends[2];
    if (::pipe(ends) != 0) return;
    processId_ = ::fork();
    if (processId_ == 0) {
      InstanceGuard guard;
      const char got = guard.acquire(folder) ? '1' : '0';
      if (::write(ends[1], &got, 1) != 1) ::_exit(1);
      while (true) ::pause();
    }
    char got = '0';
    ::close(ends[1]);
    holds_ = ::read(ends[0], &got, 1) == 1 && got == '1';
    ::close(ends[0]);
  }
  ~Holder() { kill(); }

  void kill() {
    if (processId_ <= 0) return;
    ::kill(processId_, SIGKILL);
    ::waitpid(processId_, nullptr, 0);
    processId_ = 0;
  }
  bool holds() const { return holds_; }
  int processId() const { return processId_; }

 private:
  pid_t processId_ = 0;
  bool holds_ = false;
};

class InstanceGuardTest : public ::testing::Test {
 protected:
  Scratch scratch;
  Variable runtime{"XDG_RUNTIME_DIR", scratch.path()};
};

TEST_F(InstanceGuardTest, NobodyRunsAtFirst) { EXPECT_FALSE(runningInstance()); }

TEST_F(InstanceGuardTest, TheFirstOneIsTheRunningInstance) {
  InstanceGuard guard;
  EXPECT_TRUE(guard.acquire(u"/home/é b/Tavrollo"));
  EXPECT_TRUE(guard.acquire(u"/home/é b/Tavrollo"));
  const std::optional<RunningInstance> running = runningInstance();
  ASSERT_TRUE(running);
  EXPECT_EQ(running->processId, ::getpid());
  EXPECT_EQ(running->programFolder, u"/home/é b/Tavrollo");
}

TEST_F(InstanceGuardTest, TheSecondOneIsRefusedUntilTheFirstIsGone) {
  InstanceGuard second;
  {
    InstanceGuard first;
    ASSERT_TRUE(first.acquire(u"/first"));
    EXPECT_FALSE(second.acquire(u"/second"));
    EXPECT_EQ(runningInstance()->programFolder, u"/first");
  }
  EXPECT_FALSE(runningInstance());
  EXPECT_TRUE(second.acquire(u"/second"));
}

TEST_F(InstanceGuardTest, AnotherProcessHoldsItUntilItIsKilled) {
  Holder holder(u"/other");
  ASSERT_TRUE(holder.holds());
  InstanceGuard guard;
  EXPECT_FALSE(guard.acquire(u"/mine"));
  ASSERT_TRUE(runningInstance());
  EXPECT_EQ(runningInstance()->processId, holder.processId());
  EXPECT_EQ(runningInstance()->programFolder, u"/other");

  holder.kill();
  EXPECT_FALSE(runningInstance());
  EXPECT_TRUE(guard.acquire(u"/mine"));
  EXPECT_EQ(runningInstance()->processId, ::getpid());
}

TEST_F(InstanceGuardTest, AskingNeverGetsInTheWayOfAnInstanceThatStarts) {
  scratch.write("tavrollo.lock", "");
  const pid_t asker = ::fork();
  if (asker == 0) {
    while (true) static_cast<void>(runningInstance());
  }
  constexpr int kStarts = 2000;
  int refused = 0;
  for (int i = 0; i < kStarts; ++i) {
    InstanceGuard guard;
    if (!guard.acquire(u"/a")) ++refused;
  }
  EXPECT_EQ(refused, 0);
  ::kill(asker, SIGKILL);
  ::waitpid(asker, nullptr, 0);
}

TEST_F(InstanceGuardTest, WhatAFormerHolderLeftNamesNobody) {
  // Held, but the process in the file (this one's parent) has not the lock file open.
  scratch.write("tavrollo.lock", std::to_string(::getppid()) + "\n/old\n");
  const int file = ::open(scratch.path("tavrollo.lock").c_str(), O_RDWR | O_CLOEXEC);
  EXPECT_FALSE(runningInstance());
  struct flock lock {};
  lock.l_type = F_WRLCK;
  ASSERT_EQ(::fcntl(file, F_OFD_SETLK, &lock), 0);
  ASSERT_TRUE(runningInstance());
  EXPECT_EQ(runningInstance()->processId, 0);
  EXPECT_EQ(runningInstance()->programFolder, u"");
  ::close(file);
}

TEST_F(InstanceGuardTest, AShorterHolderLeavesNothingOfTheLongerOne) {
  {
    InstanceGuard first;
    ASSERT_TRUE(first.acquire(u"/a/very/long/folder/indeed"));
  }
  InstanceGuard second;
  ASSERT_TRUE(second.acquire(u"/b"));
  EXPECT_EQ(scratch.read("tavrollo.lock"), std::to_string(::getpid()) + "\n/b\n");
}

TEST_F(InstanceGuardTest, AStartedProgramDoesNotInheritTheLock) {
  InstanceGuard guard;
  ASSERT_TRUE(guard.acquire(u"/a"));
  const pid_t child = ::fork();
  if (child == 0) {
    ::execlp("sleep", "sleep", "60", nullptr);
    ::_exit(1);
  }
  ASSERT_TRUE(waitUntil([&] {
    std::error_code error;
    const std::string name = "/proc/" + std::to_string(child) + "/exe";
    return std::filesystem::read_symlink(name, error) !=
           std::filesystem::read_symlink("/proc/self/exe", error);
  }));
  guard = InstanceGuard();
  EXPECT_FALSE(runningInstance());
  ::kill(child, SIGKILL);
  ::waitpid(child, nullptr, 0);
}

TEST_F(InstanceGuardTest, WhereNoLockCanBeKeptTheProgramRuns) {
  std::filesystem::create_directory(scratch.path("tavrollo.lock"));
  InstanceGuard guard;
  EXPECT_TRUE(guard.acquire(u"/a"));
  EXPECT_FALSE(runningInstance());
}

}  // namespace
