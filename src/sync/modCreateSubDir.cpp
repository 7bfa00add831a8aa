// SPDX-License-Identifier: GPL-3.0-or-later
#include "sync/modCreateSubDir.h"

#include <filesystem>
#include <system_error>

#include "sync/SyncPaths.h"
#include "sync/SyncTexts.h"
#include "text/Paths.h"

Failure makeSubFolders(const Text& path) {
  const Text whole = AjouterAntislash(path);
  std::size_t end = whole.find(nativeSeparator());
  for (; end != Text::npos; end = whole.find(nativeSeparator(), end + 1)) {
    const std::filesystem::path prefix = toPath(whole.substr(0, end));
    std::error_code error;
    // A drive or a server cannot be made, and some systems do not call it a folder.
    if (!prefix.has_relative_path() || std::filesystem::is_directory(prefix, error)) continue;
    std::filesystem::create_directory(prefix, error);
    if (error) return failureFromErrno(error.default_error_condition().value());
  }
  return {};
}

void CreerSousDossiers(const Text& path, Questions& questions) {
  const Failure failure = makeSubFolders(path);
  if (failure) questions.ask(createSubDirBox(failure));
}
