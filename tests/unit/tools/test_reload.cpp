// SPDX-License-Identifier: GPL-3.0-or-later
#include <csignal>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/wait.h>

#include "platform/System.h"
#include "platform/linux/CommandWords.h"
#include "platform/linux/LinuxShell.h"
#include "support/Processes.h"
#include "text/Utf.h"

namespace {

// A running instance: a process that holds the lock. Its executable is this test.
class Instance {
 public:
  enum class Manners { EndsWhenAsked, MustBeKilled };

  Instance(const Text& folder, Manners manners) {
    int ends[2];
    if (::pipe(ends) != 0) return;
    processId_ = ::fork();
    if (processId_ == 0) run(folder, manners, ends[1]);
    ::close(ends[1]);
    char ready = 0;
    holds_ = ::read(ends[0], &ready, 1) == 1;
    ::close(ends[0]);
  }
  ~Instance() {
    ::kill(processId_, SIGKILL);
    if (!ended_) ::waitpid(processId_, nullptr, 0);
  }
  Instance(const Instance&) = delete;
  Instance& operator=(const Instance&) = delete;

  bool holds() const { return holds_; }

  // The signal that ended it; 0 when it is still there.
  int endedBy() {
    int status = 0;
    ended_ = ::waitpid(processId_, &status, WNOHANG) == processId_;
    return ended_ ? WTERMSIG(status) : 0;
  }

 private:
  [[noreturn]] static void run(const Text& folder, Manners manners, int ready) {
    if (manners == Manners::MustBeKilled) ::signal(SIGTERM, SIG_IGN);
    InstanceGuard guard;
    if (!guard.acquire(folder) || ::write(ready, "1", 1) != 1) ::_exit(1);
    while (true) ::pause();
  }

  pid_t processId_ = 0;
  bool holds_ = false;
  bool ended_ = false;
};

class ReloadTest : public ::testing::Test {
 protected:
  // reload's exit status; what it says is left in "said".
  int reload(const std::vector<std::string>& arguments) {
    std::vector<std::string> words = {TAVROLLO_RELOAD};
    words.insert(words.end(), arguments.begin(), arguments.end());
    std::vector<char*> pointers;
    for (std::string& word : words) pointers.push_back(word.data());
    pointers.push_back(nullptr);
    return inChild([&] {
      const int said = ::open(scratch.path("said").c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0644);
      ::dup2(said, STDERR_FILENO);
      ::execv(pointers[0], pointers.data());
      return 99;
    });
  }

  std::string startedArguments() {
    EXPECT_TRUE(waitForFile(scratch.path("started")));
    return scratch.read("started");
  }
  bool didStart() const { return std::filesystem::exists(scratch.path("started")); }

  Scratch scratch;
  Variable runtime{"XDG_RUNTIME_DIR", scratch.path()};
  std::string program = scratch.script("Tavrollo", recordArguments(scratch.path("started")));
};

TEST_F(ReloadTest, WithoutARunningInstanceTheProgramIsStarted) {
  EXPECT_EQ(reload({"Tavrollo\t" + program}), 0);
  EXPECT_EQ(startedArguments(), "");
  EXPECT_EQ(scratch.read("said"), "");
}

TEST_F(ReloadTest, TheRunningInstanceIsEndedAndItsFolderPassedOn) {
  Instance instance(u"/home/é b/Tavrollo", Instance::Manners::EndsWhenAsked);
  ASSERT_TRUE(instance.holds());
  EXPECT_EQ(reload({"test_reload.exe\t" + program}), 0);
  EXPECT_EQ(startedArguments(), "--program-folder\n/home/é b/Tavrollo\n");
  EXPECT_EQ(instance.endedBy(), SIGTERM);
  EXPECT_FALSE(runningInstance());
}

TEST_F(ReloadTest, AnInstanceThatDoesNotListenIsKilled) {
  Instance instance(u"/a", Instance::Manners::MustBeKilled);
  ASSERT_TRUE(instance.holds());
  EXPECT_EQ(reload({"test_reload\t" + program}), 0);
  EXPECT_EQ(startedArguments(), "--program-folder\n/a\n");
  EXPECT_EQ(instance.endedBy(), SIGKILL);
}

TEST_F(ReloadTest, TheTextMayComeSplitAtTheTabAndAtBlanks) {
  const std::string other =
      scratch.script("my folder/my Tavrollo", recordArguments(scratch.path("started")));
  const std::string first = scratch.path("my");
  ASSERT_EQ(other, first + " folder/my Tavrollo");
  EXPECT_EQ(reload({"Tavrollo", first, "folder/my", "Tavrollo"}), 0);
  EXPECT_EQ(startedArguments(), "");
}

TEST_F(ReloadTest, TheShellPassesTheTextOn) {
  const std::string other =
      scratch.script("my folder/Tavrollo é", recordArguments(scratch.path("started")));
  std::vector<Text> traces;
  LinuxShell shell([&](const Text& text) { traces.push_back(text); });
  EXPECT_FALSE(shell.ShellExecute({.operation = {},
                                   .file = fromPath(TAVROLLO_RELOAD),
                                   .parameters = u"Tavrollo\t" + quoteWord(fromPath(other)),
                                   .directory = {},
                                   .show = ShowState::Normal}));
  EXPECT_EQ(startedArguments(), "");
  EXPECT_TRUE(traces.empty());
}

TEST_F(ReloadTest, AnInstanceOfAnotherNameIsLeftAlone) {
  Instance instance(u"/a", Instance::Manners::EndsWhenAsked);
  ASSERT_TRUE(instance.holds());
  EXPECT_EQ(reload({"Tavrollo\t" + program}), 1);
  EXPECT_EQ(scratch.read("said"),
            "L'instance en cours n'est pas Tavrollo : rien n'a été arrêté.\n");
  EXPECT_EQ(instance.endedBy(), 0);
  EXPECT_FALSE(didStart());
}

TEST_F(ReloadTest, AProcessThatDoesNotHoldTheLockIsLeftAlone) {
  // The process in the file is one of the right name, but it holds nothing.
  const pid_t bystander = ::fork();
  if (bystander == 0) {
    while (true) ::pause();
  }
  scratch.write("tavrollo.lock", std::to_string(bystander) + "\n/a\n");
  EXPECT_EQ(reload({"test_reload\t" + program}), 0);
  EXPECT_EQ(startedArguments(), "");
  EXPECT_EQ(::waitpid(bystander, nullptr, WNOHANG), 0);
  ::kill(bystander, SIGKILL);
  ::waitpid(bystander, nullptr, 0);
}

TEST_F(ReloadTest, NothingIsEndedForAProgramThatIsNotThere) {
  Instance instance(u"/a", Instance::Manners::EndsWhenAsked);
  ASSERT_TRUE(instance.holds());
  EXPECT_EQ(reload({"test_reload\t" + scratch.path("missing é")}), 1);
  EXPECT_EQ(scratch.read("said"),
            "Le programme à relancer est introuvable : " + scratch.path("missing é") + ".\n");
  EXPECT_EQ(instance.endedBy(), 0);
}

TEST_F(ReloadTest, AProgramThatCannotBeStartedIsAFailure) {
  const std::string orphan = scratch.write("orphan", "#!/no/such/interpreter\n", 0755);
  EXPECT_EQ(reload({"Tavrollo\t" + orphan}), 1);
  EXPECT_EQ(scratch.read("said"),
            "Le programme n'a pas pu être lancé : Fichier introuvable : " + orphan + ".\n");
}

TEST_F(ReloadTest, WrongUsageIsSaid) {
  for (const std::vector<std::string>& arguments : {std::vector<std::string>{},
                                                    {"Tavrollo"},
                                                    {"Tavrollo\t"},
                                                    {"\t" + program},
                                                    {".exe", program}}) {
    EXPECT_EQ(reload(arguments), 2);
    EXPECT_TRUE(scratch.read("said").starts_with("Utilisation : "));
  }
  EXPECT_FALSE(didStart());
}

}  // namespace
