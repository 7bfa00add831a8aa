// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include "platform/FolderTree.h"

// Copies files from one tree into another so that, whatever happens (a kill, a full disk, a pulled
// stick), each target is the old file or the new one, whole. Each is written under a hidden name
// beside its target; a batch of them is flushed at once, renamed, and flushed again. Modification
// time and permissions are carried over.

// One file to copy, and how both sides were when that was decided.
struct FileCopyJob {
  NativeName from;
  NativeName to;  // its folder must exist
  FileState fromState;
  std::optional<FileState> toState;  // nothing: there was no file
};

// What became of the job that was added under `ticket`.
struct FileCopyResult {
  std::size_t ticket = 0;
  Failure failure;
};

class FileCopyBatch {
 public:
  // Called while a file is copied, with the bytes copied of it so far; false stops the copying.
  using GoOn = std::function<bool(std::uint64_t bytes)>;
  using Waiting = std::function<void()>;

  // Both trees must be open, and outlive the batch.
  FileCopyBatch(const FolderTree& from, const FolderTree& to);

  // Takes away what was not committed.
  ~FileCopyBatch();
  FileCopyBatch(const FileCopyBatch&) = delete;
  FileCopyBatch& operator=(const FileCopyBatch&) = delete;

  // Writes the job's file under its hidden name. A symbolic link is followed on either side, and
  // stays one. Refused: a source that changes while it is read, a target that is another one than
  // what was compared, and a source that became older where a target stands. `stopped` is set when
  // `goOn` said so; then nothing of the file is left.
  Failure add(const FileCopyJob& job, std::size_t ticket, const GoOn& goOn, bool& stopped);

  // True when it is time to commit.
  bool full() const;
  bool empty() const;

  // Flushes, looks at both sides of each file once more, and gives those that may still be copied
  // their names. One result for each added file. `waiting` is called now and then meanwhile.
  std::vector<FileCopyResult> commit(const Waiting& waiting);

 private:
  struct State;
  std::unique_ptr<State> state_;
};

// True for the hidden name of a file that a copy left behind when it was interrupted. No copy of
// this process may be under way.
bool isCopyLeftover(NativeView name);
