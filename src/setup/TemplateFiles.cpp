// SPDX-License-Identifier: GPL-3.0-or-later
#include "setup/TemplateFiles.h"

#include <algorithm>
#include <filesystem>

#include "text/Paths.h"
#include "text/Utf.h"

std::vector<std::string> templateFiles(const Text& templateFolder, std::error_code& error) {
  namespace fs = std::filesystem;
  const fs::path root = toPath(templateFolder);
  std::vector<std::string> files;
  fs::recursive_directory_iterator entry(root, error);
  for (; !error && entry != fs::recursive_directory_iterator(); entry.increment(error)) {
    std::error_code unknown;
    if (entry->symlink_status(unknown).type() != fs::file_type::regular) continue;
    const Text path = fromPath(entry->path().lexically_relative(root));
    files.push_back(toUtf8Lossless(withSeparator(path, u'/')));
  }
  std::sort(files.begin(), files.end());
  return files;
}
