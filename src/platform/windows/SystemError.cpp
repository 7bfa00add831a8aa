// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/windows/SystemError.h"

#include <cerrno>

namespace {

struct ErrorRow {
  DWORD error;
  int equivalent;  // of errno
};

constexpr DWORD kDiskQuotaExceeded = 1295;  // which not every header has

constexpr ErrorRow kErrorRows[] = {
    {ERROR_FILE_NOT_FOUND, ENOENT},
    {ERROR_PATH_NOT_FOUND, ENOTDIR},
    {ERROR_INVALID_DRIVE, ENOTDIR},
    {ERROR_BAD_NETPATH, ENOTDIR},
    {ERROR_BAD_NET_NAME, ENOTDIR},
    {ERROR_DIRECTORY, ENOTDIR},
    {ERROR_INVALID_NAME, ENOENT},
    {ERROR_BAD_PATHNAME, ENOENT},
    {ERROR_CANT_RESOLVE_FILENAME, ENOENT},
    {ERROR_TOO_MANY_OPEN_FILES, EMFILE},
    {ERROR_ACCESS_DENIED, EACCES},
    {ERROR_SHARING_VIOLATION, EACCES},
    {ERROR_LOCK_VIOLATION, EACCES},
    {ERROR_PRIVILEGE_NOT_HELD, EACCES},
    {kElevationRequired, EACCES},
    {ERROR_WRITE_PROTECT, EROFS},
    {ERROR_FILE_EXISTS, EEXIST},
    {ERROR_ALREADY_EXISTS, EEXIST},
    {ERROR_DISK_FULL, ENOSPC},
    {ERROR_HANDLE_DISK_FULL, ENOSPC},
    {kDiskQuotaExceeded, ENOSPC},
    {ERROR_FILE_TOO_LARGE, EFBIG},
    {ERROR_NOT_READY, EIO},
    {ERROR_CRC, EIO},
    {ERROR_SEEK, EIO},
    {ERROR_SECTOR_NOT_FOUND, EIO},
    {ERROR_WRITE_FAULT, EIO},
    {ERROR_READ_FAULT, EIO},
    {ERROR_GEN_FAILURE, EIO},
    {ERROR_IO_DEVICE, EIO},
    {ERROR_DEVICE_NOT_CONNECTED, EIO},
    {ERROR_NOT_ENOUGH_MEMORY, ENOMEM},
};

}  // namespace

Failure failureFromSystem(DWORD error) {
  if (error == ERROR_SUCCESS) return {};
  for (const ErrorRow& row : kErrorRows) {
    if (row.error == error) return failureFromErrno(row.equivalent);
  }
  return failureFromErrno(EINVAL);
}
