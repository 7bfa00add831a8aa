// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/FileCopy.h"

#include <algorithm>
#include <array>
#include <cerrno>

#include "platform/windows/CopyNames.h"
#include "platform/windows/CopyPlace.h"
#include "platform/windows/FileTime.h"
#include "platform/windows/Flush.h"
#include "platform/windows/SystemError.h"

namespace {

constexpr std::size_t kMostFiles = 500;  // each of them, and its folder, is kept open
constexpr std::uint64_t kMostBytes = 64 * 1024 * 1024;
constexpr std::size_t kBuffer = 256 * 1024;

struct Staged {
  std::size_t ticket = 0;
  CopyPlace source;
  FileDetails sourceDetails;
  CopyPlace target;
  std::optional<FileState> targetState;
  std::wstring hiddenPath;
  Handle file;

  Staged() = default;
  Staged(const Staged&) = delete;
  Staged& operator=(const Staged&) = delete;
  ~Staged() {
    file.close();
    if (!hiddenPath.empty()) removeFile(hiddenPath);
  }
};

Failure createHidden(Staged& staged, const std::wstring& prefix, std::uint64_t& counter) {
  constexpr int kMostAttempts = 1000;
  for (int attempt = 0; attempt < kMostAttempts; ++attempt) {
    const std::wstring path = below(staged.target.folder->path, hiddenCopyName(prefix, counter++));
    staged.file = Handle(::CreateFileW(path.c_str(), GENERIC_WRITE, FILE_SHARE_READ, nullptr,
                                       CREATE_NEW, FILE_ATTRIBUTE_HIDDEN, nullptr));
    if (staged.file.isOpen()) {
      staged.hiddenPath = path;
      return {};
    }
    if (::GetLastError() != ERROR_FILE_EXISTS) return lastFailure();
  }
  return failureFromErrno(EEXIST);
}

// Copies the first `size` bytes of `from` into the empty file `to`.
Failure copyBytes(HANDLE from, HANDLE to, std::uint64_t size, const FileCopyBatch::GoOn& goOn,
                  bool& stopped) {
  const auto buffer = std::make_unique<std::array<char, kBuffer>>();
  stopped = !goOn(0);
  for (std::uint64_t done = 0; !stopped && done < size;) {
    DWORD got = 0;
    DWORD written = 0;
    const auto most = static_cast<DWORD>(std::min<std::uint64_t>(size - done, kBuffer));
    if (!::ReadFile(from, buffer->data(), most, &got, nullptr)) return lastFailure();
    if (got == 0) return failures::changingFile();
    if (!::WriteFile(to, buffer->data(), got, &written, nullptr)) return lastFailure();
    if (written != got) return failureFromErrno(ENOSPC);
    done += got;
    stopped = !goOn(done);
  }
  return {};
}

}  // namespace

struct FileCopyBatch::State {
  State(const FolderTree& source, const FolderTree& target) : from(source), to(target) {}

  const FolderTree& from;
  const FolderTree& to;
  std::vector<std::unique_ptr<Staged>> staged;
  std::uint64_t bytes = 0;
  std::wstring hiddenPrefix = hiddenCopyPrefix();
  std::uint64_t counter = 0;

  Failure find(const FileCopyJob& job, Staged& staged, std::optional<DWORD>& oldAttributes) const;
  Failure write(Staged& staged, const FileCopyJob& job, bool overFile, const GoOn& goOn,
                bool& stopped);
};

// Both ends of the copy, as long as nothing else stands at the target than what was compared.
Failure FileCopyBatch::State::find(const FileCopyJob& job, Staged& found,
                                   std::optional<DWORD>& oldAttributes) const {
  DWORD error = 0;
  found.source = {from.root().folder(parentOf(job.from), error), NativeName(baseOf(job.from))};
  if (!found.source.folder) return failureFromSystem(error);
  found.target = {to.root().folder(parentOf(job.to), error), NativeName(baseOf(job.to))};
  if (!found.target.folder) return failureFromSystem(error);
  found.targetState = job.toState;
  if (job.toState && isLinkAt(found.target)) {
    if (Failure failure = followLink(found.target)) return failure;
  }
  return checkTarget(found.target, job.toState, oldAttributes);
}

Failure FileCopyBatch::State::write(Staged& file, const FileCopyJob& job, bool overFile,
                                    const GoOn& goOn, bool& stopped) {
  Handle source;
  if (Failure failure = openSource(file.source, source, file.sourceDetails)) return failure;
  const FileVersion& version = file.sourceDetails.version;
  const bool becameOlder = unixSeconds(version.modified) < job.fromState.modified;
  if (becameOlder && overFile) return failures::changedSinceCompared();
  if (Failure failure = createHidden(file, hiddenPrefix, counter)) return failure;
  if (Failure failure = copyBytes(source.get(), file.file.get(), version.size, goOn, stopped)) {
    return failure;
  }
  if (stopped) return {};
  const std::optional<FileDetails> now = detailsOf(source.get());
  if (!now) return lastFailure();
  if (now->version != version) return failures::changingFile();
  return carryOver(*now, file.file.get());
}

FileCopyBatch::FileCopyBatch(const FolderTree& from, const FolderTree& to)
    : state_(std::make_unique<State>(from, to)) {}

FileCopyBatch::~FileCopyBatch() = default;

Failure FileCopyBatch::add(const FileCopyJob& job, std::size_t ticket, const GoOn& goOn,
                           bool& stopped) {
  stopped = false;
  auto file = std::make_unique<Staged>();
  file->ticket = ticket;
  std::optional<DWORD> oldAttributes;
  if (Failure failure = state_->find(job, *file, oldAttributes)) return failure;
  const bool overFile = oldAttributes.has_value();
  if (Failure failure = state_->write(*file, job, overFile, goOn, stopped)) return failure;
  if (stopped) return {};
  state_->bytes += file->sourceDetails.version.size;
  state_->staged.push_back(std::move(file));
  return {};
}

bool FileCopyBatch::full() const {
  return state_->staged.size() >= kMostFiles || state_->bytes >= kMostBytes;
}

bool FileCopyBatch::empty() const { return state_->staged.empty(); }

namespace {

// Gives the file its name when both sides are still as they were.
Failure putInPlace(Staged& file, const FileCopyBatch::Waiting& waiting) {
  const Handle source = openForALook(file.source.path());
  const std::optional<FileDetails> now = source.isOpen() ? detailsOf(source.get()) : std::nullopt;
  if (!now) return lastFailure();
  if (now->version != file.sourceDetails.version) return failures::changingFile();
  std::optional<DWORD> attributes;
  if (Failure failure = checkTarget(file.target, file.targetState, attributes)) return failure;
  if (!file.file.close()) return lastFailure();
  if (Failure failure = renameTo(file.target, file.hiddenPath, attributes, waiting)) return failure;
  file.hiddenPath.clear();
  return {};
}

}  // namespace

// The renaming itself is written through to the disk: there is nothing to flush behind it.
std::vector<FileCopyResult> FileCopyBatch::commit(const Waiting& waiting) {
  std::vector<FileCopyResult> results;
  if (empty()) return results;
  std::vector<HANDLE> written;
  for (const auto& file : state_->staged) written.push_back(file->file.get());
  const Failure unflushed = failureFromSystem(flushFiles(written, waiting));
  for (const auto& file : state_->staged) {
    results.push_back(
        {.ticket = file->ticket, .failure = unflushed ? unflushed : putInPlace(*file, waiting)});
  }
  state_->staged.clear();
  state_->bytes = 0;
  return results;
}
