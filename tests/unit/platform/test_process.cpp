// SPDX-License-Identifier: GPL-3.0-or-later
#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <fstream>
#include <gtest/gtest.h>
#include <poll.h>
#include <sstream>
#include <sys/wait.h>

#include "platform/linux/Process.h"
#include "support/Processes.h"

namespace {

using namespace std::chrono_literals;

ProcessStart starting(std::vector<std::string> arguments, std::string folder = {},
                      std::vector<std::string> withoutVariables = {}) {
  return {.arguments = std::move(arguments),
          .folder = std::move(folder),
          .withoutVariables = std::move(withoutVariables)};
}

bool hasNoChild() { return ::waitpid(-1, nullptr, WNOHANG) == -1 && errno == ECHILD; }

bool isReadable(int file) {
  pollfd wait{.fd = file, .events = POLLIN, .revents = 0};
  return ::poll(&wait, 1, 0) == 1;
}

// The exit status of a started program that must end by itself.
int endOf(pid_t processId) {
  int status = 0;
  ::waitpid(processId, &status, 0);
  return WEXITSTATUS(status);
}

class ProcessTest : public ::testing::Test {
 protected:
  // Runs a script that leaves what `body` prints, and gives that.
  std::string answerOf(const std::string& body, const ProcessStart& how = {}) {
    ProcessStart start = how;
    start.arguments = {
        scratch.script("ask", "{ " + body + "; } > '" + scratch.path("answer") + "'")};
    pid_t processId = 0;
    EXPECT_FALSE(startProcess(start, processId));
    endOf(processId);
    return scratch.read("answer");
  }

  Scratch scratch;
};

TEST_F(ProcessTest, ArgumentsArriveExactly) {
  const std::vector<std::string> words = {"é à", "'\"$HOME`\\", "", "-x", "a\tb", "*"};
  std::vector<std::string> arguments = {
      scratch.script("run", recordArguments(scratch.path("got")))};
  arguments.insert(arguments.end(), words.begin(), words.end());
  pid_t processId = 0;
  ASSERT_FALSE(startProcess(starting(arguments), processId));
  endOf(processId);
  std::string expected;
  for (const std::string& word : words) expected += word + "\n";
  EXPECT_EQ(scratch.read("got"), expected);
}

TEST_F(ProcessTest, AProgramStartsInItsFolder) {
  std::filesystem::create_directory(scratch.path("é b"));
  EXPECT_EQ(answerOf("pwd -P", starting({}, scratch.path("é b"))),
            std::filesystem::canonical(scratch.path("é b")).native() + "\n");
}

TEST_F(ProcessTest, ARelativeProgramIsMeantFromHere) {
  scratch.script("run", recordArguments(scratch.path("got")));
  const std::filesystem::path before = std::filesystem::current_path();
  std::filesystem::current_path(scratch.path());
  pid_t processId = 0;
  EXPECT_FALSE(startProcess(starting({"./run"}, "/"), processId));
  std::filesystem::current_path(before);
  endOf(processId);
  EXPECT_TRUE(std::filesystem::exists(scratch.path("got")));
}

TEST_F(ProcessTest, AVariableIsTakenOut) {
  const Variable kept("TAVROLLO_KEPT", "kept");
  const Variable gone("TAVROLLO_GONE", "gone");
  EXPECT_EQ(answerOf("echo \"$TAVROLLO_KEPT-$TAVROLLO_GONE\"",
                     starting({}, {}, {"TAVROLLO_GONE", "TAVROLLO"})),
            "kept-\n");
}

TEST_F(ProcessTest, TheStandardStreamsAreEmptyAndNoOtherFileIsOpen) {
  const int leaking = ::open("/proc/self/status", O_RDONLY);
  ASSERT_GT(leaking, 2);
  pid_t processId = 0;
  const std::string answer = scratch.path("answer");
  const std::string look = "names=$(readlink /proc/$$/fd/0 /proc/$$/fd/1 /proc/$$/fd/2)\n";
  ASSERT_FALSE(startProcess(starting({scratch.script("ask", look + "echo \"$names\" > '" + answer +
                                                                "'\ntest -e /proc/$$/fd/" +
                                                                std::to_string(leaking) + "\n")}),
                            processId));
  EXPECT_EQ(endOf(processId), 1);
  EXPECT_EQ(scratch.read("answer"), "/dev/null\n/dev/null\n/dev/null\n");
  ::close(leaking);
}

TEST_F(ProcessTest, SignalsAreAsInAFreshLogin) {
  ::signal(SIGINT, SIG_IGN);
  sigset_t blocked;
  sigset_t before;
  ::sigemptyset(&blocked);
  ::sigaddset(&blocked, SIGUSR1);
  ::sigprocmask(SIG_BLOCK, &blocked, &before);
  std::istringstream answer(answerOf("sed -n 's/^Sig[BI][lg][kn]:.//p' /proc/self/status"));
  ::sigprocmask(SIG_SETMASK, &before, nullptr);
  ::signal(SIGINT, SIG_DFL);

  std::uint64_t stillBlocked = 1;
  std::uint64_t stillIgnored = 1;
  ASSERT_TRUE(answer >> std::hex >> stillBlocked >> stillIgnored);
  EXPECT_EQ(stillBlocked, 0u);
  // The C library keeps two signals above these for itself.
  constexpr std::uint64_t kOrdinarySignals = 0x7FFFFFFF;
  EXPECT_EQ(stillIgnored & kOrdinarySignals, 0u);
}

TEST_F(ProcessTest, AProgramLeadsItsOwnSession) {
  pid_t processId = 0;
  ASSERT_FALSE(startProcess(starting({"sleep", "60"}), processId));
  EXPECT_EQ(::getsid(processId), processId);
  ::kill(processId, SIGKILL);
  endOf(processId);
}

TEST_F(ProcessTest, AProgramOutlivesAKilledStarter) {
  // Waits for "go", which comes only when its starter is dead.
  const std::string program = scratch.script(
      "run", "echo $$ > '" + scratch.path("started") + "'\nwhile ! test -e '" + scratch.path("go") +
                 "'; do sleep 0.02; done\ntouch '" + scratch.path("done") + "'\n");
  const pid_t starter = ::fork();
  if (starter == 0) {
    pid_t processId = 0;
    static_cast<void>(startProcess(starting({program}), processId));
    while (true) ::pause();
  }
  ASSERT_TRUE(waitForFile(scratch.path("started")));
  ::kill(starter, SIGKILL);
  ::waitpid(starter, nullptr, 0);
  scratch.write("go", "");
  EXPECT_TRUE(waitForFile(scratch.path("done")));
}

TEST_F(ProcessTest, WhatCannotBeStartedIsAFailureThatNamesIt) {
  scratch.write("plain", "text");
  scratch.script("orphan", "");
  scratch.write("orphan", "#!/no/such/interpreter\n", 0755);
  pid_t processId = 0;
  EXPECT_EQ(startProcess(starting({"tavrollo-no-such-program"}), processId),
            (Failure{53, u"Fichier introuvable : tavrollo-no-such-program"}));
  EXPECT_EQ(startProcess(starting({scratch.path("plain")}), processId),
            (Failure{70, u"Permission refusée : " + scratch.text("plain")}));
  EXPECT_EQ(startProcess(starting({scratch.path("orphan")}), processId).number, 53);
  EXPECT_EQ(startProcess(starting({"true"}, scratch.path("missing")), processId),
            (Failure{76, u"Chemin d'accès introuvable : " + scratch.text("missing")}));
  EXPECT_EQ(startProcess(starting({}), processId).number, 53);
  EXPECT_TRUE(hasNoChild());
}

TEST_F(ProcessTest, AQueryGivesOutputAndStatus) {
  const Captured answer = runAndCapture(starting({"sh", "-c", "printf 'a\\nb'; exit 3"}), 10s);
  EXPECT_FALSE(answer.failure);
  EXPECT_FALSE(answer.timedOut);
  EXPECT_EQ(answer.exitStatus, 3);
  EXPECT_EQ(answer.output, "a\nb");
  EXPECT_FALSE(answer.succeeded());
  EXPECT_TRUE(runAndCapture(starting({"true"}), 10s).succeeded());
  EXPECT_TRUE(hasNoChild());
}

TEST_F(ProcessTest, AQueryMayAnswerMoreThanAPipeHolds) {
  const Captured answer = runAndCapture(starting({"head", "-c", "1000000", "/dev/zero"}), 10s);
  EXPECT_TRUE(answer.succeeded());
  EXPECT_EQ(answer.output.size(), 1000000u);
}

TEST_F(ProcessTest, AQueryThatCannotStartSaysSo) {
  const Captured answer = runAndCapture(starting({"tavrollo-no-such-program"}), 10s);
  EXPECT_EQ(answer.failure.number, 53);
  EXPECT_FALSE(answer.succeeded());
}

TEST_F(ProcessTest, ASignalCountsAsAFailure) {
  const Captured answer = runAndCapture(starting({"sh", "-c", "kill -9 $$"}), 10s);
  EXPECT_EQ(answer.exitStatus, 128 + SIGKILL);
  EXPECT_FALSE(answer.succeeded());
}

TEST_F(ProcessTest, AQueryThatTakesTooLongIsKilledWithItsChildren) {
  const std::string pid = scratch.path("pid");
  const auto before = std::chrono::steady_clock::now();
  const Captured answer = runAndCapture(
      starting({"sh", "-c", "sleep 60 & echo $! > '" + pid + "'; printf early; wait"}), 500ms);
  EXPECT_TRUE(answer.timedOut);
  EXPECT_FALSE(answer.succeeded());
  EXPECT_EQ(answer.output, "early");
  EXPECT_LT(std::chrono::steady_clock::now() - before, 30s);
  EXPECT_TRUE(hasNoChild());
  const std::string grandchild = scratch.read("pid");
  ASSERT_FALSE(grandchild.empty());
  const std::string folder = "/proc/" + grandchild.substr(0, grandchild.find('\n'));
  EXPECT_TRUE(waitUntil([&] {
    std::ifstream status(folder + "/stat");
    std::string text;
    return !std::getline(status, text) || text.find(") Z") != std::string::npos;
  }));
}

TEST_F(ProcessTest, AChildLeftBehindDoesNotHoldAQueryUp) {
  const auto before = std::chrono::steady_clock::now();
  const Captured answer = runAndCapture(
      starting(
          {"sh", "-c", "setsid sleep 20 & echo $! > '" + scratch.path("pid") + "'; printf done"}),
      15s);
  EXPECT_TRUE(answer.succeeded());
  EXPECT_EQ(answer.output, "done");
  EXPECT_LT(std::chrono::steady_clock::now() - before, 10s);
  ::kill(std::stoi(scratch.read("pid")), SIGKILL);
}

TEST_F(ProcessTest, AnEndedChildIsToldOnceAndLeavesNoZombie) {
  ChildProcesses children;
  ASSERT_GE(children.eventsFd(), 0);
  ASSERT_FALSE(children.start(starting({"sh", "-c", "exit 4"}), u"four"));
  ASSERT_TRUE(waitUntil([&] { return isReadable(children.eventsFd()); }));

  std::vector<ChildProcesses::Ended> ended;
  const auto remember = [&](const ChildProcesses::Ended& child) { ended.push_back(child); };
  children.reap(remember);
  children.reap(remember);
  ASSERT_EQ(ended.size(), 1u);
  EXPECT_EQ(ended[0].label, u"four");
  EXPECT_EQ(ended[0].exitStatus, 4);
  EXPECT_FALSE(isReadable(children.eventsFd()));
  EXPECT_TRUE(hasNoChild());
}

TEST_F(ProcessTest, NothingIsReadableWhileAChildRuns) {
  ChildProcesses children;
  const std::string go = scratch.path("go");
  ASSERT_FALSE(children.start(
      starting({"sh", "-c", "while ! test -e '" + go + "'; do sleep 0.02; done"}), u"waits"));
  int count = 0;
  children.reap([&](const ChildProcesses::Ended&) { ++count; });
  EXPECT_EQ(count, 0);
  EXPECT_FALSE(isReadable(children.eventsFd()));
  scratch.write("go", "");
  ASSERT_TRUE(waitUntil([&] { return isReadable(children.eventsFd()); }));
  children.reap([&](const ChildProcesses::Ended&) { ++count; });
  EXPECT_EQ(count, 1);
}

TEST_F(ProcessTest, ManyChildrenAreAllCollected) {
  ChildProcesses children;
  constexpr int kMany = 50;
  for (int i = 0; i < kMany; ++i) {
    ASSERT_FALSE(children.start(starting({"sh", "-c", "exit " + std::to_string(i)}), {}));
  }
  int sum = 0;
  EXPECT_TRUE(waitUntil([&] {
    children.reap([&](const ChildProcesses::Ended& child) { sum += child.exitStatus; });
    return hasNoChild();
  }));
  children.reap([&](const ChildProcesses::Ended& child) { sum += child.exitStatus; });
  EXPECT_EQ(sum, kMany * (kMany - 1) / 2);
}

TEST_F(ProcessTest, WithoutTheKernelsNoticeEndsAreSeenAtTheNextStart) {
  ChildProcesses children(ChildProcesses::Notice::None);
  EXPECT_EQ(children.eventsFd(), -1);
  ASSERT_FALSE(children.start(starting({"sh", "-c", "exit 7"}), u"first"));
  siginfo_t info{};
  ASSERT_EQ(::waitid(P_ALL, 0, &info, WEXITED | WNOWAIT), 0);  // it has ended, nobody has taken it
  EXPECT_TRUE(children.start(starting({"tavrollo-no-such-program"}), u"second"));
  EXPECT_TRUE(hasNoChild());
  std::vector<Text> labels;
  children.reap([&](const ChildProcesses::Ended& child) { labels.push_back(child.label); });
  EXPECT_EQ(labels, std::vector<Text>{u"first"});
}

TEST_F(ProcessTest, WhatIsToldMayStartAnother) {
  ChildProcesses children;
  ASSERT_FALSE(children.start(starting({"true"}), u"first"));
  std::vector<Text> labels;
  EXPECT_TRUE(waitUntil([&] {
    children.reap([&](const ChildProcesses::Ended& child) {
      labels.push_back(child.label);
      if (child.label == u"first") {
        EXPECT_FALSE(children.start(starting({"true"}), u"second"));
      }
    });
    return labels.size() == 2;
  }));
  EXPECT_EQ(labels, (std::vector<Text>{u"first", u"second"}));
}

}  // namespace
