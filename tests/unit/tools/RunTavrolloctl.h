// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <fcntl.h>
#include <string>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

#include "support/Scratch.h"

// Runs the real tavrolloctl, found through TAVROLLOCTL, which the build defines.

struct Outcome {
  int status = -1;  // the exit status; -1 when it was ended by a signal
  std::string out;
  std::string err;
};

namespace detail {

// The program, started with these files as its standard input and outputs; an input of -1 is the
// test's own.
inline pid_t startTavrolloctl(std::vector<std::string> arguments, int in, int out, int err) {
  arguments.insert(arguments.begin(), TAVROLLOCTL);
  std::vector<char*> argv;
  for (std::string& argument : arguments) argv.push_back(argument.data());
  argv.push_back(nullptr);

  const pid_t child = fork();
  if (child == 0) {
    if (in >= 0) dup2(in, STDIN_FILENO);
    dup2(out, STDOUT_FILENO);
    dup2(err, STDERR_FILENO);
    execv(argv[0], argv.data());
    _exit(127);
  }
  return child;
}

inline int exitStatusOf(pid_t child) {
  int status = 0;
  waitpid(child, &status, 0);
  return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

inline int createFile(const Text& path) {
  return open(toPath(path).c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600);
}

}  // namespace detail

// Runs it with the file descriptor `out` as its standard output, which is closed then.
inline Outcome runTavrolloctlInto(int out, const std::vector<std::string>& arguments, int in = -1) {
  const Scratch folder;
  const int err = detail::createFile(folder.text("err"));
  Outcome run;
  run.status = detail::exitStatusOf(detail::startTavrolloctl(arguments, in, out, err));
  close(out);
  close(err);
  run.err = bytesOf(folder.text("err"));
  return run;
}

inline Outcome runTavrolloctl(const std::vector<std::string>& arguments) {
  const Scratch folder;
  Outcome run = runTavrolloctlInto(detail::createFile(folder.text("out")), arguments);
  run.out = bytesOf(folder.text("out"));
  return run;
}

// Runs it with these bytes as its standard input.
inline Outcome runTavrolloctlOn(std::string_view input, const std::vector<std::string>& arguments) {
  const Scratch folder;
  writeBytes(folder.text("in"), input);
  const int in = open(toPath(folder.text("in")).c_str(), O_RDONLY | O_CLOEXEC);
  Outcome run = runTavrolloctlInto(detail::createFile(folder.text("out")), arguments, in);
  close(in);
  run.out = bytesOf(folder.text("out"));
  return run;
}

// A file's name as an argument.
inline std::string argument(const Text& path) { return toPath(path).string(); }
