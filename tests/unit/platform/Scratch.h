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
#include <sys/stat.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>
#include <vector>

#include "text/Paths.h"

// What tests on real files and real programs need.

// A folder that is removed with everything in it.
class Scratch {
 public:
  Scratch() {
    std::string name = (std::filesystem::temp_directory_path() / "tavrollo-test-XXXXXX").native();
    if (!::mkdtemp(name.data())) throw std::runtime_error("no scratch folder");
    root_ = name;
  }
  ~Scratch() {
    std::error_code ignored;
    std::filesystem::remove_all(root_, ignored);
  }
  Scratch(const Scratch&) = delete;
  Scratch& operator=(const Scratch&) = delete;

  std::string path(std::string_view name = {}) const {
    return name.empty() ? root_.native() : (root_ / name).native();
  }
  Text text(std::string_view name = {}) const { return fromPath(path(name)); }

  std::string write(std::string_view name, std::string_view bytes, mode_t mode = 0644) const {
    const std::string file = path(name);
    std::filesystem::create_directories(std::filesystem::path(file).parent_path());
    std::ofstream(file, std::ios::binary) << bytes;
    ::chmod(file.c_str(), mode);
    return file;
  }

  // A shell script that can be started.
  std::string script(std::string_view name, std::string_view body) const {
    return write(name, "#!/bin/sh\n" + std::string(body), 0755);
  }

  std::string read(std::string_view name) const {
    std::ifstream file(path(name), std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
  }

  std::vector<std::string> namesIn(std::string_view name = {}) const {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(path(name))) {
      names.push_back(entry.path().filename().native());
    }
    return names;
  }

 private:
  std::filesystem::path root_;
};

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
    if (value) {
      ::setenv(name_.c_str(), value->c_str(), 1);
    } else {
      ::unsetenv(name_.c_str());
    }
  }

  std::string name_;
  std::optional<std::string> old_;
};

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
