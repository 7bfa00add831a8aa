// SPDX-License-Identifier: GPL-3.0-or-later
#include "sync/SyncPaths.h"

#include <filesystem>
#include <system_error>

#include "text/Paths.h"

namespace {

bool isSeparator(char16_t unit) { return unit == u'\\' || unit == nativeSeparator(); }

// Asking whether two paths are the same folder fails on some systems when one ends with a
// separator.
std::filesystem::path withoutTrailingSeparator(const std::filesystem::path& path) {
  return path.has_filename() ? path : path.parent_path();
}

// True when `path`, or a folder that it stands in, is `folder`.
bool standsIn(const std::filesystem::path& path, const std::filesystem::path& folder) {
  std::error_code error;
  std::filesystem::path here = std::filesystem::weakly_canonical(path, error);
  if (error) here = path;
  for (;;) {
    if (std::filesystem::equivalent(here, folder, error) && !error) return true;
    const std::filesystem::path above = here.parent_path();
    if (above == here) return false;
    here = above;
  }
}

}  // namespace

Text AjouterAntislash(const Text& path) {
  if (path.empty() || isSeparator(path.back())) return path;
  return path + nativeSeparator();
}

Text userFilesRoot(const Text& webRoot) { return nativePath(webRoot + u"user_datas\\"); }

Text liveShortcutTable(const Text& webRoot) {
  return nativePath(webRoot + u"res_css\\js\\shortQrCode.js");
}

Text travellingShortcutTable(const Text& webRoot) {
  return userFilesRoot(webRoot) + u"shortQrCode.js";
}

bool foldersOverlap(const Text& one, const Text& other) {
  const std::filesystem::path a = withoutTrailingSeparator(toPath(one));
  const std::filesystem::path b = withoutTrailingSeparator(toPath(other));
  return standsIn(a, b) || standsIn(b, a);
}
