// SPDX-License-Identifier: GPL-3.0-or-later
#include <cerrno>
#include <fcntl.h>
#include <filesystem>
#include <string>
#include <sys/stat.h>
#include <utility>

#include "platform/Files.h"
#include "platform/InstanceFile.h"
#include "platform/System.h"
#include "platform/linux/FileDescriptor.h"
#include "text/Utf.h"

namespace {

Text lockPath() { return runtimeFolder() + u"/tavrollo.lock"; }

// A lock of the open file: unlike flock's it can be asked about without being taken, so that asking
// never gets in the way of an instance that is just starting.
struct flock wholeFile(short type) {
  struct flock lock {};
  lock.l_type = type;
  lock.l_whence = SEEK_SET;
  return lock;
}

bool isLocked(int file) {
  struct flock lock = wholeFile(F_WRLCK);
  return ::fcntl(file, F_OFD_GETLK, &lock) == 0 && lock.l_type != F_UNLCK;
}

// False also when the process is gone or is not ours to look at.
bool hasOpen(int processId, const struct stat& file) {
  std::error_code error;
  const std::string folder = "/proc/" + std::to_string(processId) + "/fd";
  std::filesystem::directory_iterator entry(folder, error);
  for (; !error && entry != std::filesystem::directory_iterator(); entry.increment(error)) {
    struct stat status {};
    if (::stat(entry->path().c_str(), &status) != 0) continue;
    if (status.st_dev == file.st_dev && status.st_ino == file.st_ino) return true;
  }
  return false;
}

}  // namespace

struct InstanceGuard::Lock {
  explicit Lock(FileDescriptor opened) : file(std::move(opened)) {}
  // Closing lets go of it too, but not at once while somebody looks at our open files in /proc.
  ~Lock() {
    struct flock lock = wholeFile(F_UNLCK);
    ::fcntl(file.number(), F_OFD_SETLK, &lock);
  }
  Lock(const Lock&) = delete;
  Lock& operator=(const Lock&) = delete;

  FileDescriptor file;
};

InstanceGuard::InstanceGuard() = default;
InstanceGuard::~InstanceGuard() = default;
InstanceGuard::InstanceGuard(InstanceGuard&& other) noexcept = default;
InstanceGuard& InstanceGuard::operator=(InstanceGuard&& other) noexcept = default;

bool InstanceGuard::acquire(const Text& programFolder) {
  if (lock_) return true;
  FileDescriptor file(
      ::open(toUtf8Lossless(lockPath()).c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, 0600));
  // Where no lock can be kept nothing can be told, and running twice is better than not at all.
  if (!file.isOpen()) return true;
  struct flock lock = wholeFile(F_WRLCK);
  if (::fcntl(file.number(), F_OFD_SETLK, &lock) != 0) return errno != EAGAIN && errno != EACCES;

  const std::string holder = instanceFileText({::getpid(), programFolder});
  const bool written = ::ftruncate(file.number(), 0) == 0 &&
                       ::pwrite(file.number(), holder.data(), holder.size(), 0) >= 0;
  static_cast<void>(written);  // the lock holds without it; only a relaunch will not know us
  lock_ = std::make_unique<Lock>(std::move(file));
  return true;
}

std::optional<RunningInstance> runningInstance() {
  const Text path = lockPath();
  // Asking for a lock to write needs a file that is open for writing.
  const FileDescriptor file(::open(toUtf8Lossless(path).c_str(), O_RDWR | O_CLOEXEC | O_NOFOLLOW));
  if (!file.isOpen() || !isLocked(file.number())) return std::nullopt;

  struct stat status {};
  std::string bytes;
  if (::fstat(file.number(), &status) != 0 || readFile(path, bytes)) return RunningInstance{};
  RunningInstance holder = parseInstanceFile(bytes);
  // A process number of an earlier holder may by now be anyone's.
  if (holder.processId <= 0 || !hasOpen(holder.processId, status)) return RunningInstance{};
  return holder;
}
