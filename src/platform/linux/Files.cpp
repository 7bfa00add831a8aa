// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/Files.h"

#include <array>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <memory>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

#include "platform/linux/FileDescriptor.h"
#include "platform/linux/NewName.h"
#include "platform/linux/Retried.h"
#include "text/Paths.h"
#include "text/Utf.h"

namespace {

constexpr std::size_t kCopyBuffer = 256 * 1024;
constexpr int kMostLinks = 40;
constexpr mode_t kNewFileMode = 0666;
constexpr mode_t kModeBits = 07777;

// The path's bytes. A path with a NUL would name another file: no file has it, and neither has "".
std::string nativeName(TextView path) {
  if (path.find(u'\0') != TextView::npos) return {};
  return toPath(path).native();
}

std::int64_t nanoseconds(const timespec& time) {
  return static_cast<std::int64_t>(time.tv_sec) * 1'000'000'000 + time.tv_nsec;
}

FileStamp stampOf(const struct stat& status) {
  return {.size = static_cast<std::uint64_t>(status.st_size),
          .inode = status.st_ino,
          .modified = nanoseconds(status.st_mtim),
          .changed = nanoseconds(status.st_ctim)};
}

Failure writeAll(int file, std::string_view bytes) {
  while (!bytes.empty()) {
    const ssize_t written = retried([&] { return ::write(file, bytes.data(), bytes.size()); });
    if (written < 0) return failureFromErrno(errno);
    bytes.remove_prefix(static_cast<std::size_t>(written));
  }
  return {};
}

std::string folderOf(const std::string& path) {
  const std::size_t cut = path.rfind('/');
  if (cut == std::string::npos) return ".";
  return cut == 0 ? "/" : path.substr(0, cut);
}

// What a chain of links ends at, also where nothing stands there yet. "" when it has no end.
std::string withLinksResolved(std::string path) {
  for (int i = 0; i < kMostLinks; ++i) {
    std::error_code error;
    const std::filesystem::path target = std::filesystem::read_symlink(path, error);
    if (error) return path;
    path = (std::filesystem::path(folderOf(path)) / target).native();
  }
  return {};
}

// The name of the file that a new one is made under, until it is whole: hidden, and short enough
// wherever the target's own name is.
std::string temporaryName(const std::string& folder, int attempt) {
  return folder + "/.tavrollo-" + std::to_string(::getpid()) + "-" + std::to_string(attempt) +
         ".tmp";
}

// A hidden file in the target's folder that becomes the target, or vanishes.
class TemporaryFile {
 public:
  explicit TemporaryFile(std::string target)
      : target_(std::move(target)), folder_(folderOf(target_)) {}
  ~TemporaryFile() {
    if (!name_.empty()) ::unlink(name_.c_str());
  }
  TemporaryFile(const TemporaryFile&) = delete;
  TemporaryFile& operator=(const TemporaryFile&) = delete;

  Failure create() {
    constexpr int kMostAttempts = 1000;
    for (int attempt = 0; attempt < kMostAttempts; ++attempt) {
      const std::string name = temporaryName(folder_, attempt);
      const int file = retried([&] {
        return ::open(name.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, kNewFileMode);
      });
      if (file >= 0) {
        file_ = FileDescriptor(file);
        name_ = name;
        return {};
      }
      if (errno != EEXIST) return failureFromErrno(errno);
    }
    return failureFromErrno(EEXIST);
  }

  Failure setMode(mode_t mode) {
    return failureFromErrno(::fchmod(file_.number(), mode & kModeBits) == 0 ? 0 : errno);
  }

  Failure write(std::string_view bytes) { return writeAll(file_.number(), bytes); }

  // Flushes it and gives it the target's name; with `overNothing`, only where nothing stands.
  Failure becomeTarget(bool overNothing) {
    if (retried([&] { return ::fsync(file_.number()); }) != 0) return failureFromErrno(errno);
    if (!file_.close()) return failureFromErrno(errno);
    if (!rename(overNothing)) return failureFromErrno(errno);
    name_.clear();
    flushFolder();
    return {};
  }

 private:
  bool rename(bool overNothing) {
    if (overNothing) return renameOverNothing(AT_FDCWD, name_, target_);
    return ::rename(name_.c_str(), target_.c_str()) == 0;
  }

  // The new file stands whole either way, so a file system that cannot do this is no failure.
  void flushFolder() {
    const FileDescriptor folder(::open(folder_.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (folder.isOpen()) retried([&] { return ::fsync(folder.number()); });
  }

  std::string target_;
  std::string folder_;
  std::string name_;
  FileDescriptor file_;
};

// Why the file that stands there must not be replaced; success also when none does.
Failure replaceable(const std::string& target, const struct stat& old) {
  if (S_ISDIR(old.st_mode)) return failureFromErrno(EISDIR);
  if (!S_ISREG(old.st_mode)) return failures::notRegularFile();
  const bool writable = ::faccessat(AT_FDCWD, target.c_str(), W_OK, AT_EACCESS) == 0;
  return failureFromErrno(writable ? 0 : errno);
}

}  // namespace

std::optional<FileStamp> fileStamp(const Text& path) {
  struct stat status {};
  if (::stat(nativeName(path).c_str(), &status) != 0) return std::nullopt;
  return stampOf(status);
}

SharedFile::~SharedFile() {
  if (isOpen()) ::close(static_cast<int>(handle_));
}

SharedFile::SharedFile(SharedFile&& other) noexcept : handle_(std::exchange(other.handle_, -1)) {}

SharedFile& SharedFile::operator=(SharedFile&& other) noexcept {
  std::swap(handle_, other.handle_);
  return *this;
}

Failure SharedFile::open(const Text& path) {
  *this = SharedFile();
  const std::string name = nativeName(path);
  // Without O_NONBLOCK a pipe that nobody writes to would block here.
  FileDescriptor file(
      retried([&] { return ::open(name.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY); }));
  if (!file.isOpen()) return failureFromErrno(errno);
  struct stat status {};
  if (::fstat(file.number(), &status) != 0) return failureFromErrno(errno);
  if (!S_ISREG(status.st_mode)) return failures::notRegularFile();
  handle_ = file.release();
  return {};
}

Failure SharedFile::stamp(FileStamp& stamp) const {
  struct stat status {};
  if (::fstat(static_cast<int>(handle_), &status) != 0) return failureFromErrno(errno);
  stamp = stampOf(status);
  return {};
}

Failure SharedFile::readAt(std::uint64_t offset, std::span<char> into, std::size_t& count) const {
  count = 0;
  while (count < into.size()) {
    const ssize_t got = retried([&] {
      return ::pread(static_cast<int>(handle_), into.data() + count, into.size() - count,
                     static_cast<off_t>(offset + count));
    });
    if (got < 0) return failureFromErrno(errno);
    if (got == 0) return {};
    count += static_cast<std::size_t>(got);
  }
  return {};
}

bool somethingAt(const Text& path) {
  struct stat status {};
  return ::lstat(nativeName(path).c_str(), &status) == 0;
}

Failure replaceFile(const Text& path, std::string_view bytes) {
  const std::string target = withLinksResolved(nativeName(path));
  if (target.empty()) return failureFromErrno(ENOENT);

  struct stat old {};
  const bool replaces = ::stat(target.c_str(), &old) == 0;
  if (!replaces && errno != ENOENT) return failureFromErrno(errno);
  if (replaces) {
    if (Failure failure = replaceable(target, old)) return failure;
  }

  TemporaryFile file(target);
  if (Failure failure = file.create()) return failure;
  if (replaces) {
    if (Failure failure = file.setMode(old.st_mode)) return failure;
  }
  if (Failure failure = file.write(bytes)) return failure;
  return file.becomeTarget(false);
}

Failure copyFile(const Text& from, const Text& to) {
  SharedFile source;
  if (Failure failure = source.open(from)) return failure;
  const std::string target = nativeName(to);
  if (target.empty()) return failureFromErrno(ENOENT);

  TemporaryFile file(target);
  if (Failure failure = file.create()) return failure;
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
