// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/FileCopy.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "platform/linux/CopyNames.h"
#include "platform/linux/CopyPlace.h"
#include "platform/linux/FileBytes.h"
#include "platform/linux/Flush.h"
#include "platform/linux/Retried.h"
#include "platform/linux/Stick.h"
#include "platform/linux/TreeRoot.h"

namespace {

constexpr std::size_t kMostFiles = 500;
constexpr std::uint64_t kMostBytes = 64 * 1024 * 1024;
constexpr std::size_t kMostFolders = 100;  // each keeps a descriptor open
constexpr mode_t kUntilItIsWhole = 0600;

struct Staged {
  std::size_t ticket = 0;
  CopyPlace source;
  struct stat sourceStatus {};
  bool sourceOnStick = false;
  CopyPlace target;
  std::optional<FileState> targetState;
  std::string hiddenName;
  FileDescriptor file;  // kept open in a small batch, where each file is flushed by itself

  Staged() = default;
  Staged(const Staged&) = delete;
  Staged& operator=(const Staged&) = delete;
  ~Staged() {
    if (!hiddenName.empty()) ::unlinkat(target.folder->number(), hiddenName.c_str(), 0);
  }
};

Failure createHidden(Staged& staged, const std::string& prefix, std::uint64_t& counter) {
  constexpr int kMostAttempts = 1000;
  for (int attempt = 0; attempt < kMostAttempts; ++attempt) {
    const std::string name = hiddenCopyName(prefix, counter++);
    const int file = retried([&] {
      return ::openat(staged.target.folder->number(), name.c_str(),
                      O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, kUntilItIsWhole);
    });
    if (file >= 0) {
      staged.file = FileDescriptor(file);
      staged.hiddenName = name;
      return {};
    }
    if (errno != EEXIST) return failureFromErrno(errno);
  }
  return failureFromErrno(EEXIST);
}

}  // namespace

struct FileCopyBatch::State {
  State(const FolderTree& source, const FolderTree& target) : from(source), to(target) {}

  const FolderTree& from;
  const FolderTree& to;
  std::vector<std::unique_ptr<Staged>> staged;
  std::uint64_t bytes = 0;
  std::size_t folders = 0;
  std::string hiddenPrefix = hiddenCopyPrefix();
  std::uint64_t counter = 0;
  CopyWays ways;

  Failure find(const FileCopyJob& job, Staged& staged, std::optional<mode_t>& oldMode) const;
  Failure write(Staged& staged, const FileCopyJob& job, std::optional<mode_t> oldMode,
                const GoOn& goOn, bool& stopped);
  void keep(std::unique_ptr<Staged> file);
  int flush(const std::vector<int>& numbers, const Waiting& waiting) const;
  void flushNames(const std::vector<int>& numbers, const Waiting& waiting) const;
};

// Both ends of the copy, as long as nothing else stands at the target than what was compared.
Failure FileCopyBatch::State::find(const FileCopyJob& job, Staged& found,
                                   std::optional<mode_t>& oldMode) const {
  found.source = {from.root().folder(parentOf(job.from)), NativeName(baseOf(job.from))};
  if (!found.source.folder) return failureFromErrno(errno);
  found.target = {to.root().folder(parentOf(job.to)), NativeName(baseOf(job.to))};
  if (!found.target.folder) return failureFromErrno(errno);
  found.targetState = job.toState;
  if (!isTakenBySticks(found.target.name) && isStick(found.target.folder->number())) {
    return failureFromErrno(EINVAL);
  }

  struct stat status {};
  const bool isLink =
      job.toState && found.target.status(status, AT_SYMLINK_NOFOLLOW) && S_ISLNK(status.st_mode);
  if (isLink) {
    if (Failure failure = followLink(found.target)) return failure;
  }
  return checkTarget(found.target, job.toState, oldMode);
}

Failure FileCopyBatch::State::write(Staged& file, const FileCopyJob& job,
                                    std::optional<mode_t> oldMode, const GoOn& goOn,
                                    bool& stopped) {
  FileDescriptor source;
  if (Failure failure = openSource(file.source, source, file.sourceStatus)) return failure;
  file.sourceOnStick = isStick(source.number());
  const bool becameOlder = file.sourceStatus.st_mtim.tv_sec < job.fromState.modified;
  if (becameOlder && oldMode) return failures::changedSinceCompared();
  if (Failure failure = createHidden(file, hiddenPrefix, counter)) return failure;

  const auto size = static_cast<std::uint64_t>(file.sourceStatus.st_size);
  switch (copyFileBytes(source.number(), file.file.number(), size, ways, goOn)) {
    case BytesCopied::Failed: return failureFromErrno(errno);
    case BytesCopied::SourceEnded: return failures::changingFile();
    case BytesCopied::Stopped: stopped = true; return {};
    case BytesCopied::All: break;
  }
  struct stat now {};
  if (::fstat(source.number(), &now) != 0) return failureFromErrno(errno);
  if (!isSameVersion(now, file.sourceStatus, file.sourceOnStick)) return failures::changingFile();
  return carryOver(source.number(), now, oldMode, file.file.number());
}

void FileCopyBatch::State::keep(std::unique_ptr<Staged> file) {
  const bool newFolder = staged.empty() || staged.back()->target.folder != file->target.folder ||
                         staged.back()->source.folder != file->source.folder;
  folders += newFolder ? 1 : 0;
  bytes += static_cast<std::uint64_t>(file->sourceStatus.st_size);
  staged.push_back(std::move(file));
}

// Brings the files, or the folders that they are in, to the disk.
int FileCopyBatch::State::flush(const std::vector<int>& numbers, const Waiting& waiting) const {
  return staged.size() <= kFewFiles ? flushFiles(numbers, waiting)
                                    : flushFileSystems(numbers, waiting);
}

// A new folder is lost with its files as long as only itself is on the disk.
void FileCopyBatch::State::flushNames(const std::vector<int>& numbers,
                                      const Waiting& waiting) const {
  if (!to.root().madeFolder) {
    flush(numbers, waiting);
    return;
  }
  const bool flushed = flushFileSystems(numbers, waiting) == 0;
  if (flushed && !numbers.empty()) to.root().madeFolder = false;
}

FileCopyBatch::FileCopyBatch(const FolderTree& from, const FolderTree& to)
    : state_(std::make_unique<State>(from, to)) {}

FileCopyBatch::~FileCopyBatch() = default;

Failure FileCopyBatch::add(const FileCopyJob& job, std::size_t ticket, const GoOn& goOn,
                           bool& stopped) {
  stopped = false;
  auto file = std::make_unique<Staged>();
  file->ticket = ticket;
  std::optional<mode_t> oldMode;
  if (Failure failure = state_->find(job, *file, oldMode)) return failure;
  if (Failure failure = state_->write(*file, job, oldMode, goOn, stopped)) return failure;
  if (stopped) return {};
  const bool keepOpen = state_->staged.size() < kFewFiles;
  if (!keepOpen && !file->file.close()) return failureFromErrno(errno);
  state_->keep(std::move(file));
  return {};
}

bool FileCopyBatch::full() const {
  return state_->staged.size() >= kMostFiles || state_->bytes >= kMostBytes ||
         state_->folders >= kMostFolders;
}

bool FileCopyBatch::empty() const { return state_->staged.empty(); }

namespace {

// Gives the file its name when both sides are still as they were.
Failure putInPlace(Staged& file) {
  struct stat source {};
  if (!file.source.status(source)) return failureFromErrno(errno);
  if (!isSameVersion(source, file.sourceStatus, file.sourceOnStick))
    return failures::changingFile();
  std::optional<mode_t> oldMode;
  if (Failure failure = checkTarget(file.target, file.targetState, oldMode)) return failure;
  if (!renameTo(file.target, file.hiddenName, !oldMode)) return failureFromErrno(errno);
  file.hiddenName.clear();
  return {};
}

}  // namespace

std::vector<FileCopyResult> FileCopyBatch::commit(const Waiting& waiting) {
  std::vector<FileCopyResult> results;
  if (empty()) return results;
  std::vector<int> written;
  for (const auto& file : state_->staged) {
    written.push_back(file->file.isOpen() ? file->file.number() : file->target.folder->number());
  }
  const Failure unflushed = failureFromErrno(state_->flush(written, waiting));

  std::vector<int> folders;
  for (const auto& file : state_->staged) {
    const Failure failure = unflushed ? unflushed : putInPlace(*file);
    if (!failure) folders.push_back(file->target.folder->number());
    results.push_back({.ticket = file->ticket, .failure = failure});
  }
  // The new files are whole either way: a failure here only means that a power cut may bring back
  // the old ones.
  state_->flushNames(folders, waiting);
  state_->staged.clear();
  state_->bytes = 0;
  state_->folders = 0;
  return results;
}
