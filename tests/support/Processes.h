// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

#ifndef TAVROLLO_WITHOUT_POSIX
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>
#endif

#include "support/Scratch.h"
#include "text/Paths.h"

// What tests of real programs need.

// Sets an environment variable, or takes it away, until the scope ends.
class Variable {
 public:
  Variable(std::string name, const std::optional<std::string>& value) : name_(std::move(name)) {
    if (const char* old = std::getenv(name_.c_str())) old_ = old;
    set(value);
  }
  ~Variable() { set(old_); }
  Variable(const Variable&) = delete;
  Variable& operator=(const Variable&) = delete;

 private:
  void set(const std::optional<std::string>& value) {
#ifdef TAVROLLO_WITHOUT_POSIX
    ::_putenv_s(name_.c_str(), value.value_or("").c_str());
#else
    if (value) {
      ::setenv(name_.c_str(), value->c_str(), 1);
    } else {
      ::unsetenv(name_.c_str());
    }
#endif
  }

  std::string name_;
  std::optional<std::string> old_;
};

#ifndef TAVROLLO_WITHOUT_POSIX

// A body for Scratch::script that writes its arguments, one a line, to `file` and ends with
// `status`. The file appears whole.
inline std::string recordArguments(const std::string& file, int status = 0) {
  return "for word in \"$@\"; do printf '%s\\n' \"$word\"; done > '" + file + ".part'\nmv '" +
         file + ".part' '" + file + "'\nexit " + std::to_string(status) + "\n";
}

// The exit status of `work`, run in a process of its own; -1 when it did not end by itself.
inline int inChild(const std::function<int()>& work) {
  const pid_t child = ::fork();
  if (child == 0) ::_exit(work());
  int status = 0;
  ::waitpid(child, &status, 0);
  return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

// As inChild, as a user that may not do everything.
inline int inChildWithoutRights(const std::function<int()>& work) {
  constexpr uid_t kNobody = 65534;
  constexpr int kStillRoot = 99;
  return inChild([&] { return ::geteuid() == 0 && ::seteuid(kNobody) != 0 ? kStillRoot : work(); });
}

#endif

// True when `state` comes true within ten seconds.
inline bool waitUntil(const std::function<bool()>& state) {
  const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(10);
  while (!state()) {
    if (std::chrono::steady_clock::now() > deadline) return false;
    std::this_thread::sleep_for(std::chrono::milliseconds(5));
  }
  return true;
}

inline bool waitForFile(const std::string& path) {
  return waitUntil([&] { return std::filesystem::exists(path); });
}
