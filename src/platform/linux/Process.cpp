// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/linux/Process.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <filesystem>
#include <poll.h>
#include <spawn.h>
#include <sys/epoll.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>
#include <utility>

#include "text/Utf.h"

namespace {

using Clock = std::chrono::steady_clock;

constexpr int kFirstOtherFile = 3;

// What happens in the child before the program starts.
class FileActions {
 public:
  FileActions() { ::posix_spawn_file_actions_init(&actions_); }
  ~FileActions() { ::posix_spawn_file_actions_destroy(&actions_); }
  FileActions(const FileActions&) = delete;
  FileActions& operator=(const FileActions&) = delete;

  void enter(const std::string& folder) {
    ::posix_spawn_file_actions_addchdir_np(&actions_, folder.c_str());
  }
  // `output` is a file that the program writes to, or -1 for none.
  void setStreams(int output) {
    if (output >= 0) ::posix_spawn_file_actions_adddup2(&actions_, output, STDOUT_FILENO);
    openNothing(STDIN_FILENO);
    if (output < 0) openNothing(STDOUT_FILENO);
    openNothing(STDERR_FILENO);
    ::posix_spawn_file_actions_addclosefrom_np(&actions_, kFirstOtherFile);
  }
  const posix_spawn_file_actions_t* get() const { return &actions_; }

 private:
  void openNothing(int file) {
    ::posix_spawn_file_actions_addopen(&actions_, file, "/dev/null", O_RDWR, 0);
  }

  posix_spawn_file_actions_t actions_{};
};

// A session of its own, no signal blocked, none ignored.
class Attributes {
 public:
  Attributes() {
    ::posix_spawnattr_init(&attributes_);
    sigset_t signals;
    ::sigemptyset(&signals);
    ::posix_spawnattr_setsigmask(&attributes_, &signals);
    ::sigfillset(&signals);
    ::posix_spawnattr_setsigdefault(&attributes_, &signals);
    ::posix_spawnattr_setflags(&attributes_,
                               POSIX_SPAWN_SETSID | POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF);
  }
  ~Attributes() { ::posix_spawnattr_destroy(&attributes_); }
  Attributes(const Attributes&) = delete;
  Attributes& operator=(const Attributes&) = delete;
  const posix_spawnattr_t* get() const { return &attributes_; }

 private:
  posix_spawnattr_t attributes_{};
};

std::vector<char*> environmentWithout(const std::vector<std::string>& names) {
  std::vector<char*> variables;
  for (char** variable = environ; *variable; ++variable) {
    const std::string_view text = *variable;
    const std::string_view name = text.substr(0, text.find('='));
    if (std::find(names.begin(), names.end(), name) == names.end()) variables.push_back(*variable);
  }
  variables.push_back(nullptr);
  return variables;
}

std::vector<char*> pointersTo(std::vector<std::string>& arguments) {
  std::vector<char*> pointers;
  pointers.reserve(arguments.size() + 1);
  for (std::string& argument : arguments) pointers.push_back(argument.data());
  pointers.push_back(nullptr);
  return pointers;
}

bool isFolder(const std::string& path) {
  struct stat status {};
  return ::stat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

// A relative path of the program is meant from here, not from the folder that it starts in.
std::string fromHere(const std::string& program) {
  if (program.find('/') == std::string::npos) return program;
  std::error_code error;
  const std::filesystem::path path = std::filesystem::absolute(program, error);
  return error ? program : path.native();
}

Failure spawn(const ProcessStart& start, int output, pid_t& processId) {
  if (start.arguments.empty()) return failureFromErrno(ENOENT);
  const Text name = fromUtf8Lossless(start.arguments.front());
  if (!start.folder.empty() && !isFolder(start.folder)) {
    return about(failureFromErrno(ENOTDIR), fromUtf8Lossless(start.folder));
  }

  FileActions actions;
  if (!start.folder.empty()) actions.enter(start.folder);
  actions.setStreams(output);
  const Attributes attributes;
  std::vector<std::string> arguments = start.arguments;
  const std::vector<char*> argumentPointers = pointersTo(arguments);
  const std::vector<char*> variables = environmentWithout(start.withoutVariables);
  const int error =
      ::posix_spawnp(&processId, fromHere(start.arguments.front()).c_str(), actions.get(),
                     attributes.get(), argumentPointers.data(), variables.data());
  return error == 0 ? Failure{} : about(failureFromErrno(error), name);
}

int exitStatusOf(int status) {
  constexpr int kSignalBase = 128;
  return WIFSIGNALED(status) ? kSignalBase + WTERMSIG(status) : WEXITSTATUS(status);
}

// Takes what stands in the pipe. False when nothing more can come.
bool takeOutput(int pipe, std::string& output) {
  std::array<char, 4096> buffer;
  while (true) {
    const ssize_t got = ::read(pipe, buffer.data(), buffer.size());
    if (got < 0 && errno == EINTR) continue;
    if (got < 0) return errno == EAGAIN;
    if (got == 0) return false;
    output.append(buffer.data(), static_cast<std::size_t>(got));
  }
}

// A child of the program may keep the pipe open, and the program may close it long before it ends:
// both are looked at in short turns.
void waitFor(pid_t processId, int pipe, Clock::time_point deadline, Captured& captured) {
  constexpr int kTurn = 10;  // milliseconds
  bool open = true;
  while (true) {
    pollfd wait{.fd = open ? pipe : -1, .events = POLLIN, .revents = 0};
    ::poll(&wait, 1, kTurn);
    int status = 0;
    const pid_t ended = ::waitpid(processId, &status, WNOHANG);
    if (open) open = takeOutput(pipe, captured.output);
    if (ended == processId) captured.exitStatus = exitStatusOf(status);
    if (ended == processId || (ended < 0 && errno != EINTR)) return;
    if (Clock::now() < deadline) continue;

    captured.timedOut = true;
    ::kill(-processId, SIGKILL);  // it leads its own session, so its children go with it
    while (::waitpid(processId, &status, 0) < 0 && errno == EINTR) {
    }
    captured.exitStatus = exitStatusOf(status);
    return;
  }
}

}  // namespace

Failure startProcess(const ProcessStart& start, pid_t& processId) {
  return spawn(start, -1, processId);
}

Captured runAndCapture(const ProcessStart& start, std::chrono::milliseconds limit) {
  const Clock::time_point deadline = Clock::now() + limit;
  Captured captured;
  int ends[2];
  if (::pipe2(ends, O_CLOEXEC) != 0) {
    captured.failure = failureFromErrno(errno);
    return captured;
  }
  const FileDescriptor output(ends[0]);
  FileDescriptor input(ends[1]);
  ::fcntl(output.number(), F_SETFL, O_NONBLOCK);

  pid_t processId = 0;
  captured.failure = spawn(start, input.number(), processId);
  input.close();
  if (!captured.failure) waitFor(processId, output.number(), deadline, captured);
  return captured;
}

ChildProcesses::ChildProcesses(Notice notice)
    : events_(notice == Notice::FromKernel ? ::epoll_create1(EPOLL_CLOEXEC) : -1) {}

Failure ChildProcesses::start(const ProcessStart& start, const Text& label) {
  collect();
  pid_t processId = 0;
  if (Failure failure = startProcess(start, processId)) return failure;
  running_.push_back({.processId = processId, .label = label, .watch = FileDescriptor()});
  watch(running_.back());
  return {};
}

void ChildProcesses::watch(Child& child) {
  if (!events_.isOpen()) return;
  child.watch = FileDescriptor(static_cast<int>(::syscall(SYS_pidfd_open, child.processId, 0)));
  if (!child.watch.isOpen()) return;
  epoll_event event{};
  event.events = EPOLLIN;
  ::epoll_ctl(events_.number(), EPOLL_CTL_ADD, child.watch.number(), &event);
}

void ChildProcesses::collect() {
  std::erase_if(running_, [this](const Child& child) {
    int status = 0;
    const pid_t ended = ::waitpid(child.processId, &status, WNOHANG);
    if (ended == child.processId) ended_.push_back({child.label, exitStatusOf(status)});
    return ended != 0;
  });
}

void ChildProcesses::reap(const std::function<void(const Ended&)>& onEnd) {
  collect();
  // What is told may start another program.
  const std::vector<Ended> ended = std::exchange(ended_, {});
  for (const Ended& child : ended) onEnd(child);
}
