// SPDX-License-Identifier: GPL-3.0-or-later
#include "sync/BackupFolder.h"

#include <filesystem>
#include <system_error>

#include "platform/System.h"
#include "sync/SyncPaths.h"
#include "text/Paths.h"

namespace {

constexpr std::size_t kShortestPath = 3;

bool isFolder(const Text& path) {
  std::error_code unknown;
  return std::filesystem::is_directory(toPath(path), unknown);
}

}  // namespace

bool isBackupFolder(const Text& path) { return path.size() >= kShortestPath && isFolder(path); }

DrivePlaces drivePlaces() {
  return {.homeDrive = environmentVariable("HOMEDRIVE").value_or(Text()),
          .user = environmentVariable("USER").value_or(Text()),
          .home = homeFolder(),
          .mountRoot = {}};
}

Text homeDriveRoot(const DrivePlaces& places) {
  if (!places.homeDrive.empty()) return AjouterAntislash(places.homeDrive);
  if (!places.user.empty()) {
    for (const TextView mounts : {u"/run/media/", u"/media/"}) {
      const Text sticks = places.mountRoot + Text(mounts) + places.user;
      if (isFolder(sticks)) return AjouterAntislash(sticks);
    }
  }
  const bool isTop = !toPath(places.home).has_relative_path();
  return isTop || !isFolder(places.home) ? Text() : AjouterAntislash(places.home);
}
