// SPDX-License-Identifier: GPL-3.0-or-later
#include "config/CookieStorePlaces.h"

#include <gtest/gtest.h>

#include "platform/System.h"
#include "support/Processes.h"

namespace {

constexpr std::int16_t kFirefox = 0;
constexpr std::int16_t kChrome = 1;
constexpr TextView kLinux = u"Unknown (4.6.1)";

UserFolders userOf(const Scratch& scratch) { return {.appData = {}, .home = scratch.text()}; }

// Where a search or a dialog begins that knows no APPDATA, written as this system writes paths.
Text startOf(std::int16_t browser, const Scratch& scratch) {
  return nativePath(cookieStartFolder(browser, kLinux, userOf(scratch)));
}
Text searchStart(const Scratch& scratch) { return nativePath(appDataFolder(userOf(scratch))); }

}  // namespace

TEST(CookieStorePlaces, EachWindowsHasItsStartFolders) {
  const Text chrome = u"C:\\D\\Local\\Google\\Chrome\\User Data\\Default";
  const Text profile = u"C:\\D\\Mozilla\\Firefox\\Profiles\\default";
  const struct {
    Text label;
    Text firefox;
    Text chrome;
  } rows[] = {
      {u"Win XP", u"C:\\D\\Mozilla\\Firefox\\Profiles", u"C:\\D"},
      {u"Win Seven", profile, u""},
      {u"Win (8) 10", profile, chrome},
      {u"Win 95", u"C:\\D", chrome},
      {u"Win 98", u"C:\\D", chrome},
      {u"Win ME", u"C:\\D", chrome},
      {u"Win NT 3", u"C:\\D", chrome},
      {u"Win NT 4", u"C:\\D", chrome},
      {u"Win 2000", u"C:\\D", chrome},
      {u"Win Vista", u"C:\\D", chrome},
      {u"Unknown (2.10.0)", u"C:\\D", chrome},
      {u"Unknown (4.6.1)", u"C:\\D", chrome},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(windowsStartFolder(kFirefox, row.label, u"C:\\D"), row.firefox);
    EXPECT_EQ(windowsStartFolder(kChrome, row.label, u"C:\\D"), row.chrome);
    const UserFolders user = {.appData = u"C:\\D", .home = u"/h"};
    EXPECT_EQ(cookieStartFolder(kFirefox, row.label, user), row.firefox);
    EXPECT_EQ(cookieStartFolder(kChrome, row.label, user), row.chrome);
  }
}

TEST(CookieStorePlaces, AWindowsWithoutAppDataKeepsItsTable) {
  const UserFolders user = {.appData = {}, .home = u"/h"};
  EXPECT_EQ(cookieStartFolder(kFirefox, u"Win XP", user), u"\\Mozilla\\Firefox\\Profiles");
  EXPECT_EQ(cookieStartFolder(kChrome, u"Win Vista", user),
            u"\\Local\\Google\\Chrome\\User Data\\Default");
}

TEST(CookieStorePlaces, ElsewhereFirefoxBeginsInTheProfileUsedLast) {
  const Scratch scratch;
  scratch.write(".mozilla/firefox/profiles.ini", "[Profile0]\nPath=x.default\n");
  scratch.write(".mozilla/firefox/x.default/cookies.sqlite", "");
  EXPECT_EQ(startOf(kFirefox, scratch), scratch.text(".mozilla/firefox/x.default"));
}

TEST(CookieStorePlaces, ElsewhereWithoutAProfileFirefoxBeginsWhereTheSearchDoes) {
  const Scratch scratch;
  EXPECT_EQ(startOf(kFirefox, scratch), scratch.text());
  scratch.makeFolders(".mozilla/firefox");
  EXPECT_EQ(startOf(kFirefox, scratch), scratch.text(".mozilla/firefox"));
}

TEST(CookieStorePlaces, ElsewhereChromeBeginsInTheFirstProfileThatExists) {
  const Scratch scratch;
  const auto start = [&] { return startOf(kChrome, scratch); };
  EXPECT_EQ(start(), scratch.text(".config/google-chrome/Default"));
  for (const char* place : {".var/app/com.google.Chrome/config/google-chrome/Default",
                            "snap/chromium/common/chromium/Default", ".config/chromium/Default",
                            ".config/google-chrome/Default"}) {
    scratch.makeFolders(place);
    EXPECT_EQ(start(), scratch.text(place));
  }
}

TEST(CookieStorePlaces, TheSearchBeginsInAppDataWhereItIsSet) {
  const Scratch scratch;
  scratch.makeFolders(".mozilla/firefox");
  UserFolders user = userOf(scratch);
  user.appData = u"C:\\D";
  EXPECT_EQ(appDataFolder(user), u"C:\\D");
}

TEST(CookieStorePlaces, TheSearchBeginsInTheRootWithTheNewestLog) {
  const Scratch scratch;
  const auto begin = std::filesystem::file_time_type::clock::now();
  for (const char* root : {".config/mozilla/firefox", ".mozilla/firefox"}) {
    scratch.write(std::string(root) + "/profiles.ini", "[Profile0]\nPath=a\n");
    scratch.write(std::string(root) + "/a/cookies.sqlite", "");
    scratch.write(std::string(root) + "/a/cookies.sqlite-wal", "");
  }
  for (const char* newest : {".mozilla/firefox", ".config/mozilla/firefox"}) {
    for (const char* root : {".config/mozilla/firefox", ".mozilla/firefox"}) {
      const bool isNewest = std::string_view(root) == newest;
      std::filesystem::last_write_time(scratch.path(std::string(root) + "/a/cookies.sqlite-wal"),
                                       begin - std::chrono::seconds(isNewest ? 1 : 100));
    }
    EXPECT_EQ(searchStart(scratch), scratch.text(newest));
  }
}

TEST(CookieStorePlaces, TheSearchBeginsInTheFirstRootThatExistsElseAtHome) {
  const Scratch scratch;
  EXPECT_EQ(searchStart(scratch), scratch.text());
  for (const char* root :
       {"snap/firefox/common/.mozilla/firefox", ".mozilla/firefox", ".config/mozilla/firefox"}) {
    scratch.makeFolders(root);
    EXPECT_EQ(searchStart(scratch), scratch.text(root));
  }
}

#ifndef TAVROLLO_WITHOUT_POSIX  // neither whole paths begin so there, nor is HOME the home
TEST(CookieStorePlaces, TheSearchLooksIntoTheUsersOwnFolderForSettings) {
  const Scratch scratch;
  scratch.makeFolders(".config/mozilla/firefox");
  scratch.makeFolders("c/mozilla/firefox");
  UserFolders user = userOf(scratch);
  user.xdgConfigHome = scratch.text("c");
  EXPECT_EQ(appDataFolder(user), scratch.text("c/mozilla/firefox"));
}

TEST(CookieStorePlaces, TheEnvironmentIsAskedForTheHome) {
  const Variable home("HOME", "/home/é");
  EXPECT_EQ(userFolders().home, u"/home/é");
}
#endif

TEST(CookieStorePlaces, TheEnvironmentIsAskedForTheUsersFolders) {
  EXPECT_EQ(userFolders().home, homeFolder());
  {
    const Variable appData("APPDATA", "/d");
    const Variable config("XDG_CONFIG_HOME", "/c");
    const UserFolders user = userFolders();
    EXPECT_EQ(user.appData, u"/d");
    EXPECT_EQ(user.xdgConfigHome, u"/c");
  }
  const Variable appData("APPDATA", std::nullopt);
  const Variable config("XDG_CONFIG_HOME", std::nullopt);
  EXPECT_EQ(userFolders().appData, std::nullopt);
  EXPECT_EQ(userFolders().xdgConfigHome, u"");
}
