// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/Files.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <memory>
#include <utility>

#include "platform/windows/FileDetails.h"
#include "platform/windows/FileTime.h"
#include "platform/windows/SystemError.h"
#include "platform/windows/Wide.h"

namespace {

constexpr std::size_t kCopyBuffer = 256 * 1024;
constexpr DWORD kMostAtOnce = 64 * 1024 * 1024;

HANDLE asHandle(std::intptr_t value) { return reinterpret_cast<HANDLE>(value); }

bool stampOf(HANDLE file, FileStamp& stamp) {
  const std::optional<FileDetails> details = detailsOf(file);
  FILE_BASIC_INFO times{};
  if (!details || !::GetFileInformationByHandleEx(file, FileBasicInfo, &times, sizeof times)) {
    return false;
  }
  stamp = {.size = details->version.size,
           .inode = details->version.index,
           .modified = unixNanoseconds(details->version.modified),
           .changed = unixNanoseconds(times.ChangeTime.QuadPart)};
  return true;
}

Failure writeAll(HANDLE file, std::string_view bytes) {
  while (!bytes.empty()) {
    const auto most = static_cast<DWORD>(std::min<std::size_t>(bytes.size(), kMostAtOnce));
    DWORD written = 0;
    if (!::WriteFile(file, bytes.data(), most, &written, nullptr)) return lastFailure();
    bytes.remove_prefix(written);
  }
  return {};
}

std::wstring parentOf(const std::wstring& path) { return path.substr(0, path.rfind(L'\\')); }

std::wstring temporaryName(const std::wstring& folder, int attempt) {
  return below(folder, L".tavrollo-" + std::to_wstring(::GetCurrentProcessId()) + L"-" +
                           std::to_wstring(attempt) + L".tmp");
}

// A file in the target's folder that becomes the target, or vanishes.
class TemporaryFile {
 public:
  explicit TemporaryFile(std::wstring target)
      : target_(std::move(target)), folder_(parentOf(target_)) {}
  ~TemporaryFile() {
    file_.close();
    if (!name_.empty()) removeFile(name_);
  }
  TemporaryFile(const TemporaryFile&) = delete;
  TemporaryFile& operator=(const TemporaryFile&) = delete;

  Failure create(DWORD attributes) {
    constexpr int kMostAttempts = 1000;
    for (int attempt = 0; attempt < kMostAttempts; ++attempt) {
      const std::wstring name = temporaryName(folder_, attempt);
      file_ = Handle(::CreateFileW(name.c_str(), GENERIC_WRITE, FILE_SHARE_READ, nullptr,
                                   CREATE_NEW, attributes, nullptr));
      if (file_.isOpen()) {
        name_ = name;
        return {};
      }
      if (::GetLastError() != ERROR_FILE_EXISTS) return lastFailure();
    }
    return failureFromErrno(EEXIST);
  }

  Failure write(std::string_view bytes) { return writeAll(file_.get(), bytes); }

  // Flushes it and gives it the target's name; with `overNothing`, only where nothing stands.
  Failure becomeTarget(bool overNothing) {
    if (!::FlushFileBuffers(file_.get()) || !file_.close()) return lastFailure();
    const DWORD flags = overNothing ? 0 : MOVEFILE_REPLACE_EXISTING;
    if (!renamePatiently(name_, target_, flags)) return lastFailure();
    name_.clear();
    return {};
  }

 private:
  std::wstring target_;
  std::wstring folder_;
  std::wstring name_;
  Handle file_;
};

// The file that is to be replaced: `path`, or what a link there ends at.
Failure findTarget(std::wstring& path, std::optional<DWORD>& attributes) {
  const DWORD found = ::GetFileAttributesW(path.c_str());
  if (found == INVALID_FILE_ATTRIBUTES) {
    return ::GetLastError() == ERROR_FILE_NOT_FOUND ? Failure() : lastFailure();
  }
  attributes = found;
  const Handle itself = openForALook(path, FILE_FLAG_OPEN_REPARSE_POINT);
  if (!itself.isOpen() || !isLink(itself.get())) return {};
  path = endOfLink(path);
  if (path.empty()) return lastFailure();
  attributes = ::GetFileAttributesW(path.c_str());
  return *attributes == INVALID_FILE_ATTRIBUTES ? lastFailure() : Failure();
}

}  // namespace

std::optional<FileStamp> fileStamp(const Text& path) {
  const Handle file = openForALook(longPath(path));
  FileStamp stamp;
  if (!file.isOpen() || !stampOf(file.get(), stamp)) return std::nullopt;
  return stamp;
}

SharedFile::~SharedFile() {
  if (isOpen()) ::CloseHandle(asHandle(handle_));
}

SharedFile::SharedFile(SharedFile&& other) noexcept : handle_(std::exchange(other.handle_, -1)) {}

SharedFile& SharedFile::operator=(SharedFile&& other) noexcept {
  std::swap(handle_, other.handle_);
  return *this;
}

Failure SharedFile::open(const Text& path) {
  *this = SharedFile();
  const std::wstring name = longPath(path);
  if (name.empty()) return failureFromErrno(ENOENT);
  // With this flag folders open too, and can be told from files that are denied.
  Handle file(::CreateFileW(name.c_str(), GENERIC_READ, kShareAll, nullptr, OPEN_EXISTING,
                            FILE_FLAG_BACKUP_SEMANTICS, nullptr));
  if (!file.isOpen()) return lastFailure();
  if (::GetFileType(file.get()) != FILE_TYPE_DISK) return failures::notRegularFile();
  const std::optional<FileDetails> details = detailsOf(file.get());
  if (!details) return lastFailure();
  if (details->isFolder()) return failures::notRegularFile();
  handle_ = reinterpret_cast<std::intptr_t>(file.release());
  return {};
}

Failure SharedFile::stamp(FileStamp& stamp) const {
  return stampOf(asHandle(handle_), stamp) ? Failure() : lastFailure();
}

Failure SharedFile::readAt(std::uint64_t offset, std::span<char> into, std::size_t& count) const {
  count = 0;
  while (count < into.size()) {
    const std::uint64_t from = offset + count;
    OVERLAPPED place{};
    place.Offset = static_cast<DWORD>(from & 0xFFFFFFFF);
    place.OffsetHigh = static_cast<DWORD>(from >> 32);
    const auto most = static_cast<DWORD>(std::min<std::size_t>(into.size() - count, kMostAtOnce));
    DWORD got = 0;
    if (!::ReadFile(asHandle(handle_), into.data() + count, most, &got, &place)) {
      return ::GetLastError() == ERROR_HANDLE_EOF ? Failure() : lastFailure();
    }
    if (got == 0) return {};
    count += got;
  }
  return {};
}

bool somethingAt(const Text& path) {
  const std::wstring name = longPath(path);
  return !name.empty() && ::GetFileAttributesW(name.c_str()) != INVALID_FILE_ATTRIBUTES;
}

// MoveFileEx and not ReplaceFile: when that one fails half-way the old file may be gone.
Failure replaceFile(const Text& path, std::string_view bytes) {
  std::wstring target = longPath(path);
  if (target.empty()) return failureFromErrno(ENOENT);
  std::optional<DWORD> old;
  if (Failure failure = findTarget(target, old)) return failure;
  if (old && (*old & FILE_ATTRIBUTE_DIRECTORY) != 0) return failureFromErrno(EISDIR);
  if (old && (*old & FILE_ATTRIBUTE_READONLY) != 0) return failureFromErrno(EACCES);

  TemporaryFile file(target);
  const DWORD attributes = lastingAttributes(old.value_or(FILE_ATTRIBUTE_NORMAL));
  if (Failure failure = file.create(attributes)) return failure;
  if (Failure failure = file.write(bytes)) return failure;
  return file.becomeTarget(false);
}

Failure copyFile(const Text& from, const Text& to) {
  SharedFile source;
  if (Failure failure = source.open(from)) return failure;
  const std::wstring target = longPath(to);
  if (target.empty()) return failureFromErrno(ENOENT);

  TemporaryFile file(target);
  if (Failure failure = file.create(FILE_ATTRIBUTE_NORMAL)) return failure;
  const auto buffer = std::make_unique<std::array<char, kCopyBuffer>>();
  std::uint64_t offset = 0;
  std::size_t count = 0;
  do {
    if (Failure failure = source.readAt(offset, *buffer, count)) return failure;
    if (Failure failure = file.write({buffer->data(), count})) return failure;
    offset += count;
  } while (count == kCopyBuffer);
  return file.becomeTarget(true);
}
