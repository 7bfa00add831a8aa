// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <chrono>
#include <functional>
#include <string>
#include <sys/types.h>
#include <vector>

#include "platform/Failure.h"
#include "platform/linux/FileDescriptor.h"

// Programs started from an argument list, never through a shell. They get a session of their own,
// so they outlive us; nothing on their standard streams, and none of our open files or signals.

struct ProcessStart {
  std::vector<std::string> arguments;  // the program first; without a "/" it is looked up in PATH
  std::string folder;                  // where it starts; "" is where we are
  std::vector<std::string> withoutVariables;  // taken out of its environment
};

// The failure names the program or the folder that was missing. Whoever starts it must wait for it.
Failure startProcess(const ProcessStart& start, pid_t& processId);

// What a short query said. A program that a signal ended has status 128 + the signal's number.
struct Captured {
  Failure failure;        // it could not be started
  bool timedOut = false;  // it took too long and was killed
  int exitStatus = 0;
  std::string output;

  bool succeeded() const { return !failure && !timedOut && exitStatus == 0; }
};
Captured runAndCapture(const ProcessStart& start, std::chrono::milliseconds limit);

// Remembers the programs that were started and collects them as they end, so that none stays behind
// as a zombie.
class ChildProcesses {
 public:
  // Without the kernel's help ends are seen only at the next start or reap.
  enum class Notice { FromKernel, None };

  struct Ended {
    Text label;
    int exitStatus;  // 128 + the signal's number when a signal ended it
  };

  explicit ChildProcesses(Notice notice = Notice::FromKernel);

  // `label` comes back when it has ended.
  Failure start(const ProcessStart& start, const Text& label);

  // Readable as long as an ended child waits for reap(). -1 when the system has no such thing.
  int eventsFd() const { return events_.number(); }

  // Collects the children that have ended and tells about each of them once.
  void reap(const std::function<void(const Ended&)>& onEnd);

 private:
  struct Child {
    pid_t processId;
    Text label;
    FileDescriptor watch;
  };
  void watch(Child& child);
  void collect();

  FileDescriptor events_;
  std::vector<Child> running_;
  std::vector<Ended> ended_;
};
