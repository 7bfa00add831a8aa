// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/linux/CopyPlace.h"

#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <linux/magic.h>
#include <memory>
#include <sys/sysmacros.h>
#include <sys/vfs.h>
#include <unistd.h>

#include "platform/linux/NewName.h"
#include "platform/linux/Retried.h"

namespace {

constexpr mode_t kPermissions = 0777;
// The kernel's EXFAT_SUPER_MAGIC and NTFS3_SUPER_MAGIC, which not every header has.
constexpr long kExFat = 0x2011BAB0;
constexpr long kNtfs = 0x7366746E;

FileState stateOf(const struct stat& status) {
  return {.modified = status.st_mtim.tv_sec, .size = static_cast<std::uint64_t>(status.st_size)};
}

// The drivers outside the kernel that have a drive to themselves are those for exFAT and NTFS; the
// others lie over folders that know permissions.
bool isOnDriveOfItsOwn(int file) {
  struct stat status {};
  return ::fstat(file, &status) == 0 && major(status.st_dev) != 0;
}

// Where the permissions are made up by the system they say nothing about the file.
bool keepsPermissions(int file) {
  struct statfs system {};
  if (::fstatfs(file, &system) != 0) return true;
  if (system.f_type == FUSE_SUPER_MAGIC) return !isOnDriveOfItsOwn(file);
  return system.f_type != MSDOS_SUPER_MAGIC && system.f_type != kExFat && system.f_type != kNtfs;
}

mode_t newFileMode() {
  const mode_t mask = ::umask(0);
  ::umask(mask);
  return 0666 & ~mask;
}

}  // namespace

bool isSameVersion(const struct stat& a, const struct stat& b) {
  return a.st_dev == b.st_dev && a.st_ino == b.st_ino && a.st_size == b.st_size &&
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
  const mode_t mode = keepsPermissions(source) ? status.st_mode : oldMode.value_or(newFileMode());
  const bool refused = ::fchmod(target, mode & kPermissions) != 0;
  if (refused && errno != EPERM && errno != EOPNOTSUPP && errno != ENOSYS) {
    return failureFromErrno(errno);
  }
  // Drivers outside the kernel ignore a time that comes alone.
  const timespec times[2] = {status.st_atim, status.st_mtim};
  return failureFromErrno(::futimens(target, times) == 0 ? 0 : errno);
}
