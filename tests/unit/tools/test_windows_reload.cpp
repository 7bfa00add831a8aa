// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/Relaunch.h"
#include "platform/Desktop.h"
#include "platform/Processes.h"
#include "unit/platform/windows/WindowsSupport.h"

namespace {

class ReloadTest : public ::testing::Test {
 protected:
  // Its exit status.
  int reload(std::vector<Text> arguments) {
    arguments.insert(arguments.begin(), folderOf(executablePath()) + u"\\reload.exe");
    return Child(arguments).status();
  }

  // A running instance, which writes down that it is ready.
  std::vector<Text> instance(TextView how) { return {program, Text(how), u"C:\\é b\\Tavrollo"}; }
  bool isReady() {
    return waitUntil([this] { return somethingAt(scratch.text("ready")); });
  }

  std::string startedArguments() { return bytesOnceReadable(scratch.text("started")); }
  bool didStart() { return somethingAt(scratch.text("started")); }

  Scratch scratch;
  Variable runtime{"LOCALAPPDATA", scratch.text()};
  const Text program = helperAs(scratch, "Tavrollo.exe");
};

TEST_F(ReloadTest, WithoutARunningInstanceTheProgramIsStarted) {
  EXPECT_EQ(reload({u"Tavrollo.exe\t" + program}), 0);
  EXPECT_EQ(startedArguments(), "");
}

TEST_F(ReloadTest, TheRunningInstanceIsEndedAndItsFolderPassedOn) {
  const Child running(instance(u"--hold"));
  ASSERT_TRUE(isReady());
  EXPECT_EQ(reload({u"Tavrollo.exe", program}), 0);
  EXPECT_EQ(running.status(), 0);
  EXPECT_EQ(startedArguments(), "--program-folder\nC:\\é b\\Tavrollo\n");
}

TEST_F(ReloadTest, AnInstanceThatDoesNotListenIsEndedByForce) {
  const Child running(instance(u"--deaf"));
  ASSERT_TRUE(isReady());
  EXPECT_EQ(reload({u"Tavrollo\t" + program}), 0);
  EXPECT_EQ(running.status(), 1);
  EXPECT_EQ(startedArguments(), "--program-folder\nC:\\é b\\Tavrollo\n");
}

TEST_F(ReloadTest, AnInstanceOfAnotherNameIsLeftAlone) {
  const Child running(instance(u"--hold"));
  ASSERT_TRUE(isReady());
  EXPECT_EQ(reload({u"Autre.exe\t" + program}), 1);
  EXPECT_TRUE(runningInstance());
  EXPECT_FALSE(didStart());
}

TEST_F(ReloadTest, NothingIsEndedForAProgramThatIsNotThere) {
  const Child running(instance(u"--hold"));
  ASSERT_TRUE(isReady());
  EXPECT_EQ(reload({u"Tavrollo.exe\t" + scratch.text("missing.exe")}), 1);
  EXPECT_TRUE(runningInstance());
}

TEST_F(ReloadTest, TheShellPassesTheProgramsRequestOn) {
  const Text other = helperAs(scratch, "my é folder/Tavrollo.exe");
  ASSERT_FALSE(copyFile(folderOf(executablePath()) + u"\\reload.exe",
                        scratch.text("my é folder/reload.exe")));
  const auto shell = makeShell([](const Text&) {});
  EXPECT_FALSE(shell->ShellExecute(relaunchRequest(other)));
  EXPECT_EQ(bytesOnceReadable(scratch.text("my é folder/started")), "");
}

TEST_F(ReloadTest, WrongUsageIsToldByTheStatus) {
  for (const std::vector<Text>& arguments :
       {std::vector<Text>{}, {u"Tavrollo"}, {u"Tavrollo\t"}, {u"\t" + program}}) {
    EXPECT_EQ(reload(arguments), 2);
  }
  EXPECT_FALSE(didStart());
}

}  // namespace
