// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/windows/FileDetails.h"

#include "platform/windows/FileTime.h"

std::optional<FileDetails> detailsOf(HANDLE file) {
  BY_HANDLE_FILE_INFORMATION found{};
  if (!::GetFileInformationByHandle(file, &found)) return std::nullopt;
  const auto joined = [](DWORD high, DWORD low) { return (std::uint64_t{high} << 32) | low; };
  return FileDetails{.version = {.volume = found.dwVolumeSerialNumber,
                                 .index = joined(found.nFileIndexHigh, found.nFileIndexLow),
                                 .size = joined(found.nFileSizeHigh, found.nFileSizeLow),
                                 .modified = ticksOf(found.ftLastWriteTime)},
                     .attributes = found.dwFileAttributes};
}

Handle openForALook(const std::wstring& path, DWORD flags) {
  return Handle(::CreateFileW(path.c_str(), FILE_READ_ATTRIBUTES, kShareAll, nullptr, OPEN_EXISTING,
                              FILE_FLAG_BACKUP_SEMANTICS | flags, nullptr));
}

bool isLink(HANDLE file) {
  FILE_ATTRIBUTE_TAG_INFO tag{};
  return ::GetFileInformationByHandleEx(file, FileAttributeTagInfo, &tag, sizeof tag) &&
         (tag.FileAttributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0 &&
         IsReparseTagNameSurrogate(tag.ReparseTag);
}

std::wstring endOfLink(const std::wstring& path) {
  const Handle file = openForALook(path);
  if (!file.isOpen()) return {};
  std::wstring end(MAX_PATH, L'\0');
  while (true) {
    const DWORD length = ::GetFinalPathNameByHandleW(
        file.get(), end.data(), static_cast<DWORD>(end.size()), FILE_NAME_NORMALIZED);
    const bool fits = length < end.size();
    end.resize(length);
    if (fits) return end;
  }
}

bool removeFile(const std::wstring& path) {
  if (::DeleteFileW(path.c_str())) return true;
  if (::GetLastError() != ERROR_ACCESS_DENIED) return false;
  return ::SetFileAttributesW(path.c_str(), FILE_ATTRIBUTE_NORMAL) && ::DeleteFileW(path.c_str());
}

DWORD lastingAttributes(DWORD attributes) {
  constexpr DWORD kLasting = FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_HIDDEN |
                             FILE_ATTRIBUTE_SYSTEM | FILE_ATTRIBUTE_ARCHIVE |
                             FILE_ATTRIBUTE_NOT_CONTENT_INDEXED;
  const DWORD kept = attributes & kLasting;
  return kept == 0 ? FILE_ATTRIBUTE_NORMAL : kept;
}

bool renamePatiently(const std::wstring& from, const std::wstring& to, DWORD flags,
                     const std::function<void()>& waiting) {
  constexpr int kMostTurns = 10;
  constexpr DWORD kTurn = 20;  // milliseconds
  for (int turn = 0; turn < kMostTurns; ++turn) {
    if (::MoveFileExW(from.c_str(), to.c_str(), flags | MOVEFILE_WRITE_THROUGH)) return true;
    const DWORD error = ::GetLastError();
    if (error != ERROR_ACCESS_DENIED && error != ERROR_SHARING_VIOLATION) return false;
    waiting();
    ::Sleep(kTurn);
    ::SetLastError(error);
  }
  return false;
}
