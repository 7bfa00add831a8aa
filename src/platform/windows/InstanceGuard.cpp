// SPDX-License-Identifier: GPL-3.0-or-later
#include <string>

#include "platform/Files.h"
#include "platform/InstanceFile.h"
#include "platform/System.h"
#include "platform/windows/Handle.h"
#include "platform/windows/Wide.h"
#include "text/Utf.h"

// The lock is a file of the user's that its holder keeps open: others may read it, and nothing
// else. A name that holds for a session alone would let one user run twice.

namespace {

constexpr DWORD kTurn = 5;  // milliseconds

Text lockPath() { return runtimeFolder() + u"\\tavrollo.lock"; }

// The lock, empty; not open with the last error set when somebody holds it.
Handle takeLock() {
  return Handle(::CreateFileW(longPath(lockPath()).c_str(), GENERIC_WRITE, FILE_SHARE_READ, nullptr,
                              CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr));
}

// Only a holder does not let others delete the file. Nothing is deleted here.
bool isHeld(const std::wstring& path) {
  const Handle file(
      ::CreateFileW(path.c_str(), DELETE, kShareAll, nullptr, OPEN_EXISTING, 0, nullptr));
  return !file.isOpen() && ::GetLastError() == ERROR_SHARING_VIOLATION;
}

// Whoever asks is in the way for a moment, and is waited for; a holder is not.
Handle takeLockPatiently() {
  constexpr int kMostTurns = 200;
  const std::wstring path = longPath(lockPath());
  Handle file = takeLock();
  for (int turn = 0; turn < kMostTurns && !file.isOpen(); ++turn) {
    if (::GetLastError() != ERROR_SHARING_VIOLATION || isHeld(path)) break;
    ::Sleep(kTurn);
    file = takeLock();
  }
  return file;
}

}  // namespace

struct InstanceGuard::Lock {
  Handle file;
};

InstanceGuard::InstanceGuard() = default;
InstanceGuard::~InstanceGuard() = default;
InstanceGuard::InstanceGuard(InstanceGuard&& other) noexcept = default;
InstanceGuard& InstanceGuard::operator=(InstanceGuard&& other) noexcept = default;

bool InstanceGuard::acquire(const Text& programFolder) {
  if (lock_) return true;
  Handle file = takeLockPatiently();
  // Where no lock can be kept nothing can be told, and running twice is better than not at all.
  if (!file.isOpen()) return ::GetLastError() != ERROR_SHARING_VIOLATION;

  const std::string holder =
      instanceFileText({static_cast<int>(::GetCurrentProcessId()), programFolder});
  DWORD written = 0;
  // The lock holds without it; only a relaunch will not know us.
  ::WriteFile(file.get(), holder.data(), static_cast<DWORD>(holder.size()), &written, nullptr);
  lock_ = std::make_unique<Lock>();
  lock_->file = std::move(file);
  return true;
}

std::optional<RunningInstance> runningInstance() {
  const Text path = lockPath();
  if (!isHeld(longPath(path))) return std::nullopt;
  // What stands there was written by the holder: taking the lock empties the file.
  std::string bytes;
  if (readFile(path, bytes)) return RunningInstance{};
  return parseInstanceFile(bytes);
}
