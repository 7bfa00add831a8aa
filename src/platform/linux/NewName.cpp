// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/linux/NewName.h"

#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <unistd.h>

bool renameOverNothing(int folder, const std::string& from, const std::string& to) {
  if (::renameat2(folder, from.c_str(), folder, to.c_str(), RENAME_NOREPLACE) == 0) return true;
  if (errno != EINVAL && errno != ENOSYS) return false;
  // A file system that cannot promise it: look first. Whatever keeps from looking may hide a file.
  const bool stands = ::faccessat(folder, to.c_str(), F_OK, AT_SYMLINK_NOFOLLOW) == 0;
  if (stands) errno = EEXIST;
  if (stands || errno != ENOENT) return false;
  return ::renameat(folder, from.c_str(), folder, to.c_str()) == 0;
}
