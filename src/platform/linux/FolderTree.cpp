// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/FolderTree.h"

#include <cerrno>
#include <dirent.h>
#include <fcntl.h>
#include <optional>
#include <sys/stat.h>

#include "platform/linux/Retried.h"
#include "platform/linux/Stick.h"
#include "platform/linux/TreeRoot.h"
#include "text/Paths.h"
#include "text/Utf.h"

namespace {

constexpr int kFolderFlags = O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC;
constexpr mode_t kNewFolderMode = 0777;

using Stream = std::unique_ptr<DIR, int (*)(DIR*)>;

FileDescriptor openFolder(int parent, const char* name) {
  return FileDescriptor(retried([&] { return ::openat(parent, name, kFolderFlags); }));
}

FileDescriptor openOrMakeFolder(int parent, const char* name, bool& made) {
  if (!isTakenBySticks(name) && isStick(parent)) {
    errno = EINVAL;
    return {};
  }
  FileDescriptor folder = openFolder(parent, name);
  if (folder.isOpen() || errno != ENOENT) return folder;
  if (::mkdirat(parent, name, kNewFolderMode) != 0 && errno != EEXIST) return folder;
  made = true;
  return openFolder(parent, name);
}

FileDescriptor duplicate(int folder) { return FileDescriptor(::fcntl(folder, F_DUPFD_CLOEXEC, 0)); }

Stream openStream(int folder) {
  FileDescriptor own = duplicate(folder);
  if (!own.isOpen()) return {nullptr, ::closedir};
  Stream stream(::fdopendir(own.number()), ::closedir);
  if (!stream) return stream;
  own.release();
  ::rewinddir(stream.get());  // it stands where the last reading ended
  return stream;
}

// False for a folder that was taken away since it was opened.
bool stillStands(int folder) {
  struct stat status {};
  return ::fstat(folder, &status) == 0 && status.st_nlink > 0;
}

struct Looked {
  mode_t type = 0;
  FileState state{};
};

// One attribute query of what is needed and nothing else. False with errno set.
bool look(int folder, const char* name, int flags, Looked& looked) {
  struct statx status {};
  const unsigned mask = STATX_TYPE | STATX_MTIME | STATX_SIZE;
  if (::statx(folder, name, flags | AT_NO_AUTOMOUNT, mask, &status) != 0) return false;
  looked.type = status.stx_mode & S_IFMT;
  // The seconds are already cut: the nanoseconds beside them are never negative.
  looked.state = {.modified = status.stx_mtime.tv_sec, .size = status.stx_size};
  return true;
}

mode_t typeFromEntry(const dirent& entry) {
  return entry.d_type == DT_UNKNOWN ? 0 : static_cast<mode_t>(DTTOIF(entry.d_type));
}

FolderEntry unreadable(const char* name, int error) {
  return {.name = name, .kind = EntryKind::Unreadable, .failure = failureFromErrno(error)};
}

// What stands under the name; nothing for what is not wanted.
std::optional<FolderEntry> examine(int folder, const dirent& found,
                                   const FolderTree::Wants& wants) {
  const char* const name = found.d_name;
  Looked looked{.type = typeFromEntry(found)};
  if (looked.type == 0 && !look(folder, name, AT_SYMLINK_NOFOLLOW, looked)) {
    return unreadable(name, errno);
  }
  if (looked.type == S_IFDIR) return FolderEntry{.name = name, .kind = EntryKind::Folder};

  const bool isLink = looked.type == S_IFLNK;
  const bool wanted = wants(name);
  if (!wanted && !isLink) return std::nullopt;
  if (!look(folder, name, 0, looked)) {
    if (!wanted) return std::nullopt;
    return unreadable(name, errno);
  }
  if (looked.type == S_IFDIR) {
    return FolderEntry{.name = name, .kind = isLink ? EntryKind::FolderLink : EntryKind::Folder};
  }
  if (!wanted) return std::nullopt;
  const EntryKind kind = looked.type == S_IFREG ? EntryKind::File : EntryKind::Special;
  return FolderEntry{.name = name, .kind = kind, .state = looked.state};
}

bool isDots(const char* name) {
  const std::string_view view(name);
  return view == "." || view == "..";
}

}  // namespace

Text nativeText(NativeView name) { return fromUtf8Lossless(name); }

NativeView parentOf(NativeView path) {
  const std::size_t cut = path.rfind('/');
  return cut == NativeView::npos ? NativeView() : path.substr(0, cut);
}

NativeView baseOf(NativeView path) {
  const std::size_t cut = path.rfind('/');
  return cut == NativeView::npos ? path : path.substr(cut + 1);
}

FolderTree::Root::Folder FolderTree::Root::folder(NativeView relative, bool create) {
  if (last && relative == lastPath && stillStands(last->number())) return last;
  FileDescriptor here = duplicate(top.number());
  for (NativeView rest = relative; here.isOpen() && !rest.empty();) {
    const std::size_t cut = rest.find('/');
    const NativeName step(rest.substr(0, cut));
    rest = cut == NativeView::npos ? NativeView() : rest.substr(cut + 1);
    here = create ? openOrMakeFolder(here.number(), step.c_str(), madeFolder)
                  : openFolder(here.number(), step.c_str());
  }
  if (!here.isOpen()) return nullptr;
  last = std::make_shared<const FileDescriptor>(std::move(here));
  lastPath = relative;
  return last;
}

FolderTree::FolderTree() : root_(std::make_unique<Root>()) {}
FolderTree::~FolderTree() = default;
FolderTree::FolderTree(FolderTree&& other) noexcept = default;
FolderTree& FolderTree::operator=(FolderTree&& other) noexcept = default;

Failure FolderTree::open(const Text& root, bool* missing) {
  const bool wasMissing = root_->missing;
  *root_ = Root();
  const bool hasNul = root.find(u'\0') != Text::npos;
  const std::string name = hasNul ? std::string() : toPath(root).native();
  const int folder =
      retried([&] { return ::open(name.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC); });
  const int error = folder < 0 ? errno : 0;
  root_->missing = error == ENOENT || error == ENOTDIR;
  root_->madeFolder = wasMissing;  // who asks again has made it
  if (missing) *missing = root_->missing;
  if (error == ENOENT) return failureFromErrno(ENOTDIR);  // "path not found", not a file
  root_->top = FileDescriptor(folder);
  return failureFromErrno(error);
}

std::uint64_t FolderTree::fileSystem() const {
  struct stat status {};
  return ::fstat(root_->top.number(), &status) == 0 ? status.st_dev : 0;
}

Failure FolderTree::read(NativeView relative, const Wants& wants, const Visit& visit) const {
  const Root::Folder folder = root_->folder(relative);
  if (!folder) return failureFromErrno(errno);
  const Stream stream = openStream(folder->number());
  if (!stream) return failureFromErrno(errno);

  errno = 0;
  while (const dirent* found = ::readdir(stream.get())) {
    if (!isDots(found->d_name)) {
      std::optional<FolderEntry> entry = examine(folder->number(), *found, wants);
      if (entry && !visit(std::move(*entry))) return {};
    }
    errno = 0;
  }
  return failureFromErrno(errno);
}

Failure FolderTree::makeFolder(NativeView relative) const {
  return failureFromErrno(root_->folder(relative, true) ? 0 : errno);
}

Failure FolderTree::remove(NativeView relative) const {
  const Root::Folder folder = root_->folder(parentOf(relative));
  if (!folder) return failureFromErrno(errno);
  const NativeName name(baseOf(relative));
  return failureFromErrno(::unlinkat(folder->number(), name.c_str(), 0) == 0 ? 0 : errno);
}
