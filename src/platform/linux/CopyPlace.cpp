// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/linux/CopyPlace.h"

#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <memory>
#include <unistd.h>

#include "platform/linux/NewName.h"
#include "platform/linux/Retried.h"
#include "platform/linux/Stick.h"

namespace {

constexpr mode_t kPermissions = 0777;
FileState stateOf(const struct stat& status) {
  return {.modified = status.st_mtim.tv_sec, .size = static_cast<std::uint64_t>(status.st_size)};
}

mode_t newFileMode() {
  const mode_t mask = ::umask(0);
  ::umask(mask);
  return 0666 & ~mask;
}

}  // namespace

bool isSameVersion(const struct stat& a, const struct stat& b, bool onStick) {
  return a.st_dev == b.st_dev && (onStick || a.st_ino == b.st_ino) && a.st_size == b.st_size &&
         a.st_mtim.tv_sec == b.st_mtim.tv_sec && a.st_mtim.tv_nsec == b.st_mtim.tv_nsec;
}

Failure openSource(const CopyPlace& place, FileDescriptor& file, struct stat& status) {
  // Without O_NONBLOCK a pipe that has taken the file's place would block.
  file = FileDescriptor(retried([&] {
    return ::openat(place.folder->number(), place.name.c_str(),
                    O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY);
  }));
  if (!file.isOpen() || ::fstat(file.number(), &status) != 0) return failureFromErrno(errno);
  return S_ISREG(status.st_mode) ? Failure() : failures::notRegularFile();
}

Failure followLink(CopyPlace& place) {
  const std::string link =
      "/proc/self/fd/" + std::to_string(place.folder->number()) + "/" + place.name;
  const std::unique_ptr<char, decltype(&std::free)> end(::realpath(link.c_str(), nullptr),
                                                        &std::free);
  if (!end) return failureFromErrno(errno);
  const std::string path = end.get();
  FileDescriptor folder(
      ::open(("/" + std::string(parentOf(path))).c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  if (!folder.isOpen()) return failureFromErrno(errno);
  place = {std::make_shared<const FileDescriptor>(std::move(folder)), std::string(baseOf(path))};
  return {};
}

Failure checkTarget(const CopyPlace& target, const std::optional<FileState>& expected,
                    std::optional<mode_t>& oldMode) {
  struct stat status {};
  if (!target.status(status, AT_SYMLINK_NOFOLLOW)) {
    return failureFromErrno(errno == ENOENT ? 0 : errno);
  }
  if (S_ISDIR(status.st_mode)) return failureFromErrno(EISDIR);
  if (!S_ISREG(status.st_mode)) return failures::notRegularFile();
  if (!expected) return failureFromErrno(EEXIST);
  if (stateOf(status) != *expected) return failures::changedSinceCompared();
  oldMode = status.st_mode;
  return {};
}

bool renameTo(const CopyPlace& target, const std::string& from, bool overNothing) {
  const int folder = target.folder->number();
  if (overNothing) return renameOverNothing(folder, from, target.name);
  return ::renameat(folder, from.c_str(), folder, target.name.c_str()) == 0;
}

Failure carryOver(int source, const struct stat& status, std::optional<mode_t> oldMode,
                  int target) {
  const mode_t mode = isStick(source) ? oldMode.value_or(newFileMode()) : status.st_mode;
  const bool refused = ::fchmod(target, mode & kPermissions) != 0;
  if (refused && errno != EPERM && errno != EOPNOTSUPP && errno != ENOSYS) {
    return failureFromErrno(errno);
  }
  // Drivers outside the kernel ignore a time that comes alone.
  const timespec times[2] = {status.st_atim, status.st_mtim};
  return failureFromErrno(::futimens(target, times) == 0 ? 0 : errno);
}
