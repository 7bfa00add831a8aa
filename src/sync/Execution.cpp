// SPDX-License-Identifier: GPL-3.0-or-later
#include "sync/Execution.h"

#include <filesystem>
#include <set>
#include <system_error>

#include "platform/FileCopy.h"
#include "sync/SyncTexts.h"
#include "sync/modCreateSubDir.h"
#include "text/Paths.h"

namespace {

constexpr int kDiskFull = 61;

bool goesToBackup(SyncAction action) {
  return action == SyncAction::NewInSource || action == SyncAction::SourceNewer;
}

bool isKnown(SyncAction action) {
  return goesToBackup(action) || action == SyncAction::NewInBackup ||
         action == SyncAction::BackupNewer;
}

NativeView folderOfPath(NativeView path) {
  const std::size_t cut = path.rfind(kNativeSeparator);
  return cut == NativeView::npos ? NativeView() : path.substr(0, cut);
}

// The file system on which the folder stands, or would stand when it was made; 0 when nobody knows.
std::uint64_t fileSystemAt(std::filesystem::path folder) {
  for (;;) {
    FolderTree tree;
    if (!tree.open(fromPath(folder))) return tree.fileSystem();
    const std::filesystem::path above = folder.parent_path();
    if (above == folder || above.empty()) return 0;
    folder = above;
  }
}

// A side while rows are carried out.
struct OpenSide {
  explicit OpenSide(const Listing& listed) : listing(listed) {}

  const Listing& listing;
  FolderTree tree;
  Failure failure;                      // why the tree is not open
  std::set<NativeName> refusedFolders;  // and those that are missing above them
  std::set<int> shownFailures;          // why folders could not be made, as boxes told
};

// The first part of the folder's path that is none on the side; "" when all are. One that stands
// there and lets nobody in was not to be made.
NativeName firstMissing(const OpenSide& side, NativeView folder) {
  std::size_t end = 0;
  do {
    end = folder.find(kNativeSeparator, end + 1);
    const NativeView part = folder.substr(0, end);
    std::error_code unknown;
    const std::filesystem::path path = toPath(side.listing.root + nativeText(part));
    if (!std::filesystem::is_directory(path, unknown)) return NativeName(part);
  } while (end != NativeView::npos);
  return {};
}

class Run {
 public:
  Run(const Listing& source, const Listing& backup, const std::vector<DifferenceRow>& rows,
      Questions& questions, SyncProgress& progress)
      : rows_(rows),
        questions_(questions),
        progress_(progress),
        source_(source),
        backup_(backup),
        toBackup_(source_, backup_),
        toSource_(backup_, source_) {}

  SyncReport run() {
    open(source_);
    open(backup_);
    for (std::size_t row = 0; row < rows_.size() && !report_.stopped; ++row) carryOut(row);
    settle(toBackup_);
    settle(toSource_);
    return std::move(report_);
  }

 private:
  // Files on their way from one side to the other.
  struct Stream {
    Stream(OpenSide& first, OpenSide& second) : from(first), to(second) {}

    OpenSide& from;
    OpenSide& to;
    FileCopyBatch batch{from.tree, to.tree};
  };

  // A missing side is made, but not in the place of a stick that was pulled since it was listed:
  // its files would end up on the disk below.
  void open(OpenSide& side) {
    bool missing = false;
    side.failure = side.tree.open(side.listing.root, &missing);
    if (rows_.empty()) return;
    const std::uint64_t before = side.listing.fileSystem;
    if (before != 0 && fileSystemAt(toPath(side.listing.root)) != before) {
      if (!side.failure) side.failure = failures::changedSinceCompared();
      return;
    }
    if (!missing) return;
    CreerSousDossiers(side.listing.root, questions_);
    side.failure = side.tree.open(side.listing.root);
  }

  void carryOut(std::size_t row) {
    // Told before anything can fail: as many rows as there are may fail at once.
    report_.stopped = !progress_.copying(row, 0);
    const SyncAction action = rows_[row].action;
    if (report_.stopped || !isKnown(action)) return;
    Stream& stream = goesToBackup(action) ? toBackup_ : toSource_;
    const FileCopyJob job = jobFor(rows_[row]);
    Failure failure = copy(stream, job, row);
    // The files that are waiting for their names hold the room of those that they will replace.
    if (failure.number == kDiskFull && !stream.batch.empty()) {
      settle(stream);
      failure = copy(stream, job, row);
    }
    if (failure) addNotCopied(row, failure);
    if (stream.batch.full()) settle(stream);
  }

  FileCopyJob jobFor(const DifferenceRow& row) const {
    const bool forth = goesToBackup(row.action);
    const Listing& from = forth ? source_.listing : backup_.listing;
    const Listing& to = forth ? backup_.listing : source_.listing;
    const std::uint32_t file = forth ? row.source : row.backup;
    const std::uint32_t partner = forth ? row.backup : row.source;
    FileCopyJob job{.from = NativeName(from.path(file)),
                    .to = NativeName(from.path(file)),
                    .fromState = from.files[file].state,
                    .toState = {}};
    if (partner != kNoFile) {
      job.to = to.path(partner);
      job.toState = to.files[partner].state;
    }
    return job;
  }

  Failure copy(Stream& stream, const FileCopyJob& job, std::size_t row) {
    if (stream.from.failure) return stream.from.failure;
    if (stream.to.failure) return stream.to.failure;
    if (Failure failure = makeFolder(stream.to, job.to)) return failure;
    const auto goOn = [&](std::uint64_t bytes) {
      return bytes == 0 || progress_.copying(row, bytes);  // its beginning was told
    };
    return stream.batch.add(job, row, goOn, report_.stopped);
  }

  Failure makeFolder(OpenSide& side, NativeView file) {
    const NativeName folder(folderOfPath(file));
    Failure failure = side.tree.makeFolder(folder);
    if (failure && isNews(side, folder, failure)) questions_.ask(createSubDirBox(failure));
    return failure;
  }

  // A folder that is missing takes those below it along, and what keeps one from being made, such
  // as write protection, mostly keeps the others too.
  static bool isNews(OpenSide& side, const NativeName& folder, const Failure& failure) {
    if (side.shownFailures.contains(failure.number)) return false;
    if (!side.refusedFolders.insert(folder).second) return false;
    const NativeName missing = firstMissing(side, folder);
    if (missing.empty()) return false;
    if (missing != folder && !side.refusedFolders.insert(missing).second) return false;
    side.shownFailures.insert(failure.number);
    return true;
  }

  void settle(Stream& stream) {
    for (const FileCopyResult& result : stream.batch.commit([this] { progress_.waiting(); })) {
      if (result.failure) {
        addNotCopied(result.ticket, result.failure);
      } else {
        ++report_.copied;
      }
    }
  }

  void addNotCopied(std::size_t row, const Failure& failure) {
    const bool forth = goesToBackup(rows_[row].action);
    const Listing& from = forth ? source_.listing : backup_.listing;
    const std::uint32_t file = forth ? rows_[row].source : rows_[row].backup;
    report_.notCopied.push_back({.row = row, .failure = failure});
    progress_.trace(notCopiedLine(from.root + nativeText(from.path(file)), failure));
  }

  const std::vector<DifferenceRow>& rows_;
  Questions& questions_;
  SyncProgress& progress_;
  OpenSide source_;
  OpenSide backup_;
  Stream toBackup_;
  Stream toSource_;
  SyncReport report_;
};

}  // namespace

SyncReport executeRows(const Listing& source, const Listing& backup,
                       const std::vector<DifferenceRow>& rows, Questions& questions,
                       SyncProgress& progress) {
  removeLeftovers(source);
  removeLeftovers(backup);
  SyncReport report = Run(source, backup, rows, questions, progress).run();
  progress.trace(copiedLine(report.copied, report.notCopied.size()));
  return report;
}

void removeLeftovers(const Listing& listing) {
  if (listing.leftovers.empty()) return;
  FolderTree tree;
  if (tree.open(listing.root)) return;
  for (const NativeName& path : listing.leftovers) tree.remove(path);
}
