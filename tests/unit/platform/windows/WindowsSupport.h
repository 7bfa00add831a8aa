// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>
#include <gtest/gtest.h>
#include <string>

#include "platform/Files.h"
#include "platform/System.h"
#include "platform/windows/Process.h"
#include "platform/windows/Wide.h"
#include "support/Scratch.h"
#include "text/Paths.h"
#include "text/Utf.h"

// What the tests of Windows have in common.

// Sets an environment variable until the scope ends.
class Variable {
 public:
  Variable(const char* name, const Text& value)
      : name_(wide(fromUtf8(name))), old_(environmentVariable(name)) {
    ::SetEnvironmentVariableW(name_.c_str(), wide(value).c_str());
  }
  ~Variable() { ::SetEnvironmentVariableW(name_.c_str(), old_ ? wide(*old_).c_str() : nullptr); }
  Variable(const Variable&) = delete;
  Variable& operator=(const Variable&) = delete;

 private:
  std::wstring name_;
  std::optional<Text> old_;
};

// True when `state` comes true within ten seconds.
inline bool waitUntil(const std::function<bool()>& state) {
  constexpr int kTurns = 2000;
  constexpr DWORD kTurn = 5;  // milliseconds
  for (int turn = 0; turn < kTurns; ++turn) {
    if (state()) return true;
    ::Sleep(kTurn);
  }
  return false;
}

// A copy of the helper (see helper.cpp) under another name; its path.
inline Text helperAs(const Scratch& scratch, std::string_view name) {
  const Text from = folderOf(executablePath()) + u"\\windows_helper.exe";
  std::filesystem::create_directories(toPath(scratch.text(name)).parent_path());
  EXPECT_FALSE(copyFile(from, scratch.text(name)));
  return scratch.text(name);
}

// A process that ends with the test at the latest.
class Child {
 public:
  explicit Child(const std::vector<Text>& arguments) {
    error_ = startCommand(commandLineOf(arguments), {}, &process_);
  }
  ~Child() { kill(); }
  Child(const Child&) = delete;
  Child& operator=(const Child&) = delete;

  DWORD error() const { return error_; }
  int processId() const { return static_cast<int>(::GetProcessId(process_.get())); }
  void kill() {
    constexpr int kKilled = 99;
    if (!process_.isOpen()) return;
    ::TerminateProcess(process_.get(), kKilled);
    ::WaitForSingleObject(process_.get(), INFINITE);
    process_.close();
  }
  // Its exit status; -1 when it does not end within ten seconds.
  int status() const {
    constexpr DWORD kPatience = 10'000;
    DWORD status = 0;
    const bool ended = ::WaitForSingleObject(process_.get(), kPatience) == WAIT_OBJECT_0;
    return ended && ::GetExitCodeProcess(process_.get(), &status) ? static_cast<int>(status) : -1;
  }

 private:
  Handle process_;
  DWORD error_ = 0;
};

// A file opened as another program might have it open.
inline Handle openAs(const Text& path, DWORD access, DWORD share) {
  return Handle(
      ::CreateFileW(longPath(path).c_str(), access, share, nullptr, OPEN_EXISTING, 0, nullptr));
}

// What another program wrote, as soon as it may be read: whoever renames a file keeps it to itself
// for a moment after the name has appeared.
inline std::string bytesOnceReadable(const Text& path) {
  constexpr DWORD kShare = FILE_SHARE_READ | FILE_SHARE_WRITE;
  EXPECT_TRUE(waitUntil([&] { return openAs(path, GENERIC_READ, kShare).isOpen(); }));
  return bytesOf(path);
}

inline DWORD attributesOf(const Text& path) { return ::GetFileAttributesW(longPath(path).c_str()); }

inline void setAttributes(const Text& path, DWORD attributes) {
  ASSERT_TRUE(::SetFileAttributesW(longPath(path).c_str(), attributes));
}

// The time of the last change, in tenths of a microsecond since 1970.
inline void setTime(const Text& path, std::int64_t ticks) {
  constexpr std::int64_t kBefore1970 = 116'444'736'000'000'000;
  const Handle file = openAs(path, FILE_WRITE_ATTRIBUTES, kShareAll);
  const auto value = static_cast<std::uint64_t>(ticks + kBefore1970);
  const FILETIME time{.dwLowDateTime = static_cast<DWORD>(value),
                      .dwHighDateTime = static_cast<DWORD>(value >> 32)};
  ASSERT_TRUE(::SetFileTime(file.get(), nullptr, nullptr, &time));
}
