// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/windows/CopyPlace.h"

#include <cerrno>
#include <memory>

#include "platform/windows/FileTime.h"
#include "platform/windows/SystemError.h"

bool isLinkAt(const CopyPlace& place) {
  const Handle file = openForALook(place.path(), FILE_FLAG_OPEN_REPARSE_POINT);
  return file.isOpen() && isLink(file.get());
}

Failure followLink(CopyPlace& place) {
  const std::wstring end = endOfLink(place.path());
  if (end.empty()) return lastFailure();
  auto folder = std::make_shared<OpenFolder>();
  folder->path = std::wstring(parentOf(end));
  folder->handle = openForALook(folder->path + L"\\");
  if (!folder->handle.isOpen()) return lastFailure();
  place = {std::move(folder), std::wstring(baseOf(end))};
  return {};
}

Failure openSource(const CopyPlace& place, Handle& file, FileDetails& details) {
  file = Handle(::CreateFileW(place.path().c_str(), GENERIC_READ, kShareAll, nullptr, OPEN_EXISTING,
                              FILE_FLAG_SEQUENTIAL_SCAN, nullptr));
  const std::optional<FileDetails> found = file.isOpen() ? detailsOf(file.get()) : std::nullopt;
  if (!found) return lastFailure();
  details = *found;
  const bool regular = ::GetFileType(file.get()) == FILE_TYPE_DISK && !details.isFolder();
  return regular ? Failure() : failures::notRegularFile();
}

Failure checkTarget(const CopyPlace& target, const std::optional<FileState>& expected,
                    std::optional<DWORD>& attributes) {
  const Handle file = openForALook(target.path(), FILE_FLAG_OPEN_REPARSE_POINT);
  if (!file.isOpen()) {
    return ::GetLastError() == ERROR_FILE_NOT_FOUND ? Failure() : lastFailure();
  }
  const std::optional<FileDetails> found = detailsOf(file.get());
  if (!found) return lastFailure();
  if (found->isFolder()) return failureFromErrno(EISDIR);
  if (isLink(file.get())) return failures::notRegularFile();
  if (!expected) return failureFromErrno(EEXIST);
  const FileState now{.modified = unixSeconds(found->version.modified),
                      .size = found->version.size};
  if (now != *expected) return failures::changedSinceCompared();
  attributes = found->attributes;
  return {};
}

Failure carryOver(const FileDetails& source, HANDLE target) {
  FILE_BASIC_INFO info{};  // a time of 0 stays as it is
  info.LastWriteTime.QuadPart = source.version.modified;
  info.FileAttributes = lastingAttributes(source.attributes);
  const bool done = ::SetFileInformationByHandle(target, FileBasicInfo, &info, sizeof info) != 0;
  return done ? Failure() : lastFailure();
}

Failure renameTo(const CopyPlace& target, const std::wstring& from, std::optional<DWORD> attributes,
                 const std::function<void()>& waiting) {
  const std::wstring to = target.path();
  const bool readOnly = attributes && (*attributes & FILE_ATTRIBUTE_READONLY) != 0;
  if (readOnly && !::SetFileAttributesW(to.c_str(), FILE_ATTRIBUTE_NORMAL)) return lastFailure();
  const DWORD flags = attributes ? MOVEFILE_REPLACE_EXISTING : 0;
  if (renamePatiently(from, to, flags, waiting)) return {};
  const Failure failure = lastFailure();
  if (readOnly) ::SetFileAttributesW(to.c_str(), *attributes);
  return failure;
}
