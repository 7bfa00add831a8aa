// SPDX-License-Identifier: GPL-3.0-or-later
#include "config/CookieStorePlaces.h"

#include <algorithm>
#include <filesystem>
#include <iterator>
#include <system_error>
#include <vector>

#include "config/FirefoxProfiles.h"
#include "config/modGetOsVersion.h"
#include "platform/System.h"
#include "text/Paths.h"

namespace {

constexpr std::int16_t kFirefox = 0;

// "" is the dialog's own folder; any other path stands behind APPDATA.
struct StartFolders {
  TextView label;
  TextView firefox;
  std::optional<TextView> chrome;
};

constexpr TextView kAppDataItself;
constexpr std::optional<TextView> kDialogsOwn;
constexpr TextView kChromeProfile = u"\\Local\\Google\\Chrome\\User Data\\Default";

constexpr StartFolders kStartFolders[] = {
    {u"Win XP", u"\\Mozilla\\Firefox\\Profiles", kAppDataItself},
    {u"Win Seven", u"\\Mozilla\\Firefox\\Profiles\\default", kDialogsOwn},
    {u"Win (8) 10", u"\\Mozilla\\Firefox\\Profiles\\default", kChromeProfile},
};
constexpr StartFolders kAnyOther = {u"", kAppDataItself, kChromeProfile};

bool isFolder(const Text& path) {
  std::error_code error;
  return std::filesystem::is_directory(toPath(path), error);
}

std::vector<Text> rootsOf(const UserFolders& folders) {
  return firefoxRoots(folders.home, folders.xdgConfigHome);
}

Text chromeProfile(const Text& home) {
  const std::vector<Text> places = {
      home + u"/.config/google-chrome/Default",
      home + u"/.config/chromium/Default",
      home + u"/snap/chromium/common/chromium/Default",
      home + u"/.var/app/com.google.Chrome/config/google-chrome/Default",
  };
  const auto found = std::find_if(places.begin(), places.end(), isFolder);
  return found == places.end() ? places.front() : *found;
}

}  // namespace

UserFolders userFolders() {
  return {.appData = environmentVariable("APPDATA"),
          .home = homeFolder(),
          .xdgConfigHome = environmentVariable("XDG_CONFIG_HOME").value_or(Text())};
}

Text appDataFolder(const UserFolders& folders) {
  if (folders.appData) return *folders.appData;
  const std::vector<Text> roots = rootsOf(folders);
  if (const auto live = liveProfile(roots)) return live->root;
  const auto found = std::find_if(roots.begin(), roots.end(), isFolder);
  return found == roots.end() ? folders.home : *found;
}

Text windowsStartFolder(std::int16_t browser, TextView label, const Text& appData) {
  const auto* row = std::find_if(std::begin(kStartFolders), std::end(kStartFolders),
                                 [&](const StartFolders& f) { return f.label == label; });
  if (row == std::end(kStartFolders)) row = &kAnyOther;
  if (browser == kFirefox) return appData + Text(row->firefox);
  return row->chrome ? appData + Text(*row->chrome) : Text();
}

Text cookieStartFolder(std::int16_t browser, TextView label, const UserFolders& folders) {
  if (folders.appData || isKnownWindows(label)) {
    return windowsStartFolder(browser, label, folders.appData.value_or(Text()));
  }
  if (browser != kFirefox) return chromeProfile(folders.home);
  const auto live = liveProfile(rootsOf(folders));
  return live ? live->folder : appDataFolder(folders);
}
