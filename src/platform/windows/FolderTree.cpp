// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/FolderTree.h"

#include <cerrno>
#include <optional>

#include "platform/windows/FileDetails.h"
#include "platform/windows/FileTime.h"
#include "platform/windows/SystemError.h"
#include "platform/windows/TreeRoot.h"
#include "platform/windows/Wide.h"

namespace {

using Folder = FolderTree::Root::Folder;

// A search that ends itself.
class Search {
 public:
  explicit Search(HANDLE handle) : handle_(handle) {}
  ~Search() {
    if (handle_ != INVALID_HANDLE_VALUE) ::FindClose(handle_);
  }
  Search(const Search&) = delete;
  Search& operator=(const Search&) = delete;

  HANDLE get() const { return handle_; }

 private:
  HANDLE handle_;
};

// Null with `error` set. Who may not list a folder may still go through it.
Folder openFolder(const std::wstring& path, DWORD flags, DWORD& error) {
  auto folder = std::make_shared<OpenFolder>();
  for (const DWORD access : {FILE_LIST_DIRECTORY | FILE_READ_ATTRIBUTES, FILE_READ_ATTRIBUTES}) {
    folder->handle = Handle(
        ::CreateFileW(path.c_str(), static_cast<DWORD>(access), FILE_SHARE_READ | FILE_SHARE_WRITE,
                      nullptr, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS | flags, nullptr));
    if (folder->handle.isOpen() || ::GetLastError() != ERROR_ACCESS_DENIED) break;
  }
  const HANDLE handle = folder->handle.get();
  error = folder->handle.isOpen() ? 0 : ::GetLastError();
  if (error != 0) return nullptr;
  const std::optional<FileDetails> details = detailsOf(handle);
  const bool throughLink = (flags & FILE_FLAG_OPEN_REPARSE_POINT) != 0 && isLink(handle);
  if (!details || !details->isFolder() || throughLink) error = ERROR_DIRECTORY;
  if (error != 0) return nullptr;
  folder->path = path;
  return folder;
}

Folder openStep(const std::wstring& path, DWORD& error, bool make) {
  Folder folder = openFolder(path, FILE_FLAG_OPEN_REPARSE_POINT, error);
  if (folder || error != ERROR_FILE_NOT_FOUND || !make) return folder;
  if (!::CreateDirectoryW(path.c_str(), nullptr) && ::GetLastError() != ERROR_ALREADY_EXISTS) {
    error = ::GetLastError();
    return nullptr;
  }
  return openFolder(path, FILE_FLAG_OPEN_REPARSE_POINT, error);
}

FileState stateOf(const FileVersion& version) {
  return {.modified = unixSeconds(version.modified), .size = version.size};
}

// What a link to a file names.
FolderEntry examineLink(const std::wstring& path, NativeName name) {
  const Handle file = openForALook(path);
  const std::optional<FileDetails> details = file.isOpen() ? detailsOf(file.get()) : std::nullopt;
  if (!details) {
    return {.name = std::move(name), .kind = EntryKind::Unreadable, .failure = lastFailure()};
  }
  const bool disk = ::GetFileType(file.get()) == FILE_TYPE_DISK;
  return {.name = std::move(name),
          .kind = disk ? EntryKind::File : EntryKind::Special,
          .state = stateOf(details->version)};
}

// What stands under the name; nothing for what is not wanted.
std::optional<FolderEntry> examine(const std::wstring& folder, const WIN32_FIND_DATAW& found,
                                   const FolderTree::Wants& wants) {
  NativeName name = found.cFileName;
  const bool link = (found.dwFileAttributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0 &&
                    IsReparseTagNameSurrogate(found.dwReserved0);
  if ((found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0) {
    return FolderEntry{.name = std::move(name),
                       .kind = link ? EntryKind::FolderLink : EntryKind::Folder};
  }
  if (!wants(name)) return std::nullopt;
  if (link) return examineLink(below(folder, name), std::move(name));
  const std::uint64_t size = (std::uint64_t{found.nFileSizeHigh} << 32) | found.nFileSizeLow;
  return FolderEntry{
      .name = std::move(name),
      .kind = EntryKind::File,
      .state = {.modified = unixSeconds(ticksOf(found.ftLastWriteTime)), .size = size}};
}

bool isDots(std::wstring_view name) { return name == L"." || name == L".."; }

}  // namespace

Text nativeText(NativeView name) { return fromWide(name); }

NativeView parentOf(NativeView path) {
  const std::size_t cut = path.rfind(L'\\');
  return cut == NativeView::npos ? NativeView() : path.substr(0, cut);
}

NativeView baseOf(NativeView path) {
  const std::size_t cut = path.rfind(L'\\');
  return cut == NativeView::npos ? path : path.substr(cut + 1);
}

FolderTree::Root::Folder FolderTree::Root::folder(NativeView relative, DWORD& error, bool create) {
  error = 0;
  if (last && relative == lastPath) return last;
  if (!top) error = ERROR_PATH_NOT_FOUND;
  Folder here = top;
  for (NativeView rest = relative; here && !rest.empty();) {
    const std::size_t cut = rest.find(L'\\');
    const NativeView step = rest.substr(0, cut);
    rest = cut == NativeView::npos ? NativeView() : rest.substr(cut + 1);
    here = openStep(below(here->path, step), error, create);
  }
  if (!here) return nullptr;
  last = here;
  lastPath = relative;
  return here;
}

FolderTree::FolderTree() : root_(std::make_unique<Root>()) {}
FolderTree::~FolderTree() = default;
FolderTree::FolderTree(FolderTree&& other) noexcept = default;
FolderTree& FolderTree::operator=(FolderTree&& other) noexcept = default;

Failure FolderTree::open(const Text& root, bool* missing) {
  *root_ = Root();
  const std::wstring path = longPath(root);
  DWORD error = ERROR_PATH_NOT_FOUND;
  if (!path.empty()) root_->top = openFolder(path, 0, error);
  if (error == ERROR_FILE_NOT_FOUND) error = ERROR_PATH_NOT_FOUND;  // it is no file that is missing
  if (missing) *missing = error == ERROR_PATH_NOT_FOUND || error == ERROR_DIRECTORY;
  return failureFromSystem(error);
}

std::uint64_t FolderTree::fileSystem() const {
  const std::optional<FileDetails> details =
      root_->top ? detailsOf(root_->top->handle.get()) : std::nullopt;
  return details ? details->version.volume : 0;
}

Failure FolderTree::read(NativeView relative, const Wants& wants, const Visit& visit) const {
  DWORD error = 0;
  const Folder folder = root_->folder(relative, error);
  if (!folder) return failureFromSystem(error);
  WIN32_FIND_DATAW found{};
  const Search search(::FindFirstFileExW(below(folder->path, L"*").c_str(), FindExInfoBasic, &found,
                                         FindExSearchNameMatch, nullptr,
                                         FIND_FIRST_EX_LARGE_FETCH));
  if (search.get() == INVALID_HANDLE_VALUE) {
    // The root of a drive has no dots: empty, it has nothing.
    return ::GetLastError() == ERROR_FILE_NOT_FOUND ? Failure() : lastFailure();
  }
  do {
    if (isDots(found.cFileName)) continue;
    std::optional<FolderEntry> entry = examine(folder->path, found, wants);
    if (entry && !visit(std::move(*entry))) return {};
  } while (::FindNextFileW(search.get(), &found));
  return ::GetLastError() == ERROR_NO_MORE_FILES ? Failure() : lastFailure();
}

Failure FolderTree::makeFolder(NativeView relative) const {
  DWORD error = 0;
  root_->folder(relative, error, true);
  return failureFromSystem(error);
}

Failure FolderTree::remove(NativeView relative) const {
  DWORD error = 0;
  const Folder folder = root_->folder(parentOf(relative), error);
  if (!folder) return failureFromSystem(error);
  return removeFile(below(folder->path, baseOf(relative))) ? Failure() : lastFailure();
}
