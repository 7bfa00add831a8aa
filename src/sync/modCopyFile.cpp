// SPDX-License-Identifier: GPL-3.0-or-later
#include "sync/modCopyFile.h"

#include <cerrno>

#include "platform/FileCopy.h"
#include "platform/Files.h"
#include "sync/modCreateSubDir.h"
#include "text/Paths.h"

namespace {

// Where a copy was interrupted before, its hidden file goes.
void removeLeftovers(const FolderTree& tree) {
  std::vector<NativeName> found;
  tree.read({}, isCopyLeftover, [&found](FolderEntry&& entry) {
    found.push_back(std::move(entry.name));
    return true;
  });
  for (const NativeName& name : found) tree.remove(name);
}

// The path up to its last separator, that included; the current folder when it has none.
Text placeOf(const Text& path) {
  const std::size_t cut = path.rfind(nativeSeparator());
  return cut == Text::npos ? Text(u".") : path.substr(0, cut + 1);
}

NativeName nativeNameOf(const Text& path) { return toPath(nameOf(path)).native(); }

std::optional<FileState> stateNow(const Text& path) {
  constexpr std::int64_t kSecond = 1'000'000'000;
  const std::optional<FileStamp> stamp = fileStamp(path);
  if (!stamp) return std::nullopt;
  const std::int64_t seconds = stamp->modified / kSecond - (stamp->modified % kSecond < 0 ? 1 : 0);
  return FileState{.modified = seconds, .size = stamp->size};
}

Failure copyOnce(const Text& source, const Text& destination, bool onlyWhereNothingStands) {
  FolderTree from;
  FolderTree to;
  if (Failure failure = from.open(placeOf(source))) return failure;
  if (Failure failure = to.open(placeOf(destination))) return failure;
  removeLeftovers(to);

  const std::optional<FileState> sourceState = stateNow(source);
  if (!sourceState) return failureFromErrno(ENOENT);
  FileCopyJob job{.from = nativeNameOf(source),
                  .to = nativeNameOf(destination),
                  .fromState = *sourceState,
                  .toState = {}};
  if (!onlyWhereNothingStands) job.toState = stateNow(destination);
  FileCopyBatch batch(from, to);
  bool stopped = false;
  const auto goOn = [](std::uint64_t) { return true; };
  if (Failure failure = batch.add(job, 0, goOn, stopped)) return failure;
  return batch.commit([] {}).front().failure;
}

}  // namespace

bool CopierFichier(const Text& source, const Text& destination, std::int16_t failIfExists,
                   Questions& questions, Failure* why) {
  const Text from = nativePath(source);
  const Text to = nativePath(destination);
  Failure failure = copyOnce(from, to, failIfExists != 0);
  if (failure) {
    CreerSousDossiers(folderOf(to), questions);
    failure = copyOnce(from, to, failIfExists != 0);
  }
  if (why) *why = failure;
  return !failure;
}
