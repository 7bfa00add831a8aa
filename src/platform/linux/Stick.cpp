// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/linux/Stick.h"

#include <linux/magic.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <sys/vfs.h>

namespace {

// The kernel's EXFAT_SUPER_MAGIC and NTFS3_SUPER_MAGIC, which not every header has.
constexpr long kExFat = 0x2011BAB0;
constexpr long kNtfs = 0x7366746E;

// The drivers outside the kernel that have a drive to themselves are those for exFAT and NTFS; the
// others lie over folders that know permissions.
bool isOnDriveOfItsOwn(int file) {
  struct stat status {};
  return ::fstat(file, &status) == 0 && major(status.st_dev) != 0;
}

}  // namespace

bool isStick(int file) {
  struct statfs system {};
  if (::fstatfs(file, &system) != 0) return false;
  if (system.f_type == FUSE_SUPER_MAGIC) return isOnDriveOfItsOwn(file);
  return system.f_type == MSDOS_SUPER_MAGIC || system.f_type == kExFat || system.f_type == kNtfs;
}

bool isTakenBySticks(std::string_view name) { return !name.ends_with('.'); }
