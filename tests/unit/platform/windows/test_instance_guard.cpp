// SPDX-License-Identifier: GPL-3.0-or-later
#include "WindowsSupport.h"
#include "platform/Desktop.h"
#include "platform/Processes.h"

namespace {

class InstanceGuardTest : public ::testing::Test {
 protected:
  bool isReady() {
    return waitUntil([this] { return somethingAt(scratch.text("ready")); });
  }

  Scratch scratch;
  Variable runtime{"LOCALAPPDATA", scratch.text()};
  const Text helper = helperAs(scratch, "Tavrollo.exe");
};

TEST_F(InstanceGuardTest, NobodyRunsAtFirst) { EXPECT_FALSE(runningInstance()); }

TEST_F(InstanceGuardTest, TheFirstOneIsTheRunningInstance) {
  InstanceGuard guard;
  EXPECT_TRUE(guard.acquire(u"C:\\é 日\\Tavrollo"));
  EXPECT_TRUE(guard.acquire(u"C:\\é 日\\Tavrollo"));
  const std::optional<RunningInstance> running = runningInstance();
  ASSERT_TRUE(running);
  EXPECT_EQ(running->processId, static_cast<int>(::GetCurrentProcessId()));
  EXPECT_EQ(running->programFolder, u"C:\\é 日\\Tavrollo");
}

TEST_F(InstanceGuardTest, TheSecondOneIsRefusedUntilTheFirstIsGone) {
  InstanceGuard second;
  {
    InstanceGuard first;
    ASSERT_TRUE(first.acquire(u"C:\\first and longer"));
    EXPECT_FALSE(second.acquire(u"C:\\second"));
    EXPECT_EQ(runningInstance()->programFolder, u"C:\\first and longer");
  }
  EXPECT_FALSE(runningInstance());
  EXPECT_TRUE(second.acquire(u"C:\\second"));
  EXPECT_EQ(runningInstance()->programFolder, u"C:\\second");
}

TEST_F(InstanceGuardTest, AnotherProcessHoldsItUntilItIsKilled) {
  Child holder({helper, u"--deaf", u"C:\\other"});
  ASSERT_TRUE(isReady());
  InstanceGuard guard;
  EXPECT_FALSE(guard.acquire(u"C:\\mine"));
  ASSERT_TRUE(runningInstance());
  EXPECT_EQ(runningInstance()->processId, holder.processId());
  EXPECT_EQ(executableName(holder.processId()), u"Tavrollo.exe");
  EXPECT_FALSE(askToEnd(holder.processId()));
  forceToEnd(holder.processId());
  EXPECT_EQ(holder.status(), 1);
  EXPECT_FALSE(runningInstance());
  EXPECT_TRUE(guard.acquire(u"C:\\mine"));
}

TEST_F(InstanceGuardTest, AnInstanceEndsWhenItIsAsked) {
  Child holder({helper, u"--hold", u"C:\\other"});
  ASSERT_TRUE(isReady());
  EXPECT_TRUE(askToEnd(holder.processId()));
  EXPECT_EQ(holder.status(), 0);
  EXPECT_FALSE(runningInstance());
}

TEST_F(InstanceGuardTest, AskingNeverGetsInTheWayOfAnInstanceThatStarts) {
  const Child asker({helper, u"--ask"});
  ASSERT_EQ(asker.error(), 0u);
  int refused = 0;
  for (int i = 0; i < 200; ++i) {
    InstanceGuard guard;
    if (!guard.acquire(u"C:\\a")) ++refused;
  }
  EXPECT_EQ(refused, 0);
}

TEST_F(InstanceGuardTest, WhatAFormerHolderLeftNamesNobody) {
  scratch.write("Tavrollo/tavrollo.lock", "4\nC:\\old\n");
  EXPECT_FALSE(runningInstance());
  InstanceGuard guard;
  EXPECT_TRUE(guard.acquire(u"C:\\new"));
  EXPECT_EQ(runningInstance()->programFolder, u"C:\\new");
}

TEST_F(InstanceGuardTest, WhereNoLockCanBeKeptTheProgramRuns) {
  scratch.makeFolders("Tavrollo/tavrollo.lock");
  InstanceGuard guard;
  EXPECT_TRUE(guard.acquire(u"C:\\a"));
  EXPECT_FALSE(runningInstance());
}

TEST(TerminationRequests, AreSetWhenThisProcessIsAskedToEnd) {
  const TerminationRequests requests;
  const auto event = reinterpret_cast<HANDLE>(requests.eventsFd());
  EXPECT_EQ(::WaitForSingleObject(event, 0), static_cast<DWORD>(WAIT_TIMEOUT));
  EXPECT_TRUE(askToEnd(static_cast<int>(::GetCurrentProcessId())));
  EXPECT_EQ(::WaitForSingleObject(event, 0), static_cast<DWORD>(WAIT_OBJECT_0));
}

}  // namespace
