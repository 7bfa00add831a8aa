// SPDX-License-Identifier: GPL-3.0-or-later
#include "config/FirefoxProfiles.h"

#include <gtest/gtest.h>

#include "support/Scratch.h"

namespace {

using Folders = std::vector<Text>;

constexpr std::string_view kFreshInstallation = "[Install4F96D1932A9F858E]\n"
                                                "Default=used.default-esr\n"
                                                "Locked=1\n"
                                                "\n"
                                                "[Profile1]\n"
                                                "Name=default\n"
                                                "IsRelative=1\n"
                                                "Path=unused.default\n"
                                                "Default=1\n"
                                                "\n"
                                                "[Profile0]\n"
                                                "Name=default-esr\n"
                                                "IsRelative=1\n"
                                                "Path=used.default-esr\n"
                                                "\n"
                                                "[General]\n"
                                                "StartWithLastProfile=1\n"
                                                "Version=2\n";

Folders native(Folders folders) {
  for (Text& folder : folders) folder = nativePath(folder);
  return folders;
}

// A whole path on this system.
std::string elsewhere() { return nativeSeparator() == u'/' ? "/x/a" : "C:\\x\\a"; }

void setModified(const Text& path, int seconds) {
  const auto time = std::filesystem::file_time_type::clock::now() + std::chrono::seconds(seconds);
  std::filesystem::last_write_time(toPath(path), time);
}

// A root with profiles; times are seconds from now.
class Root {
 public:
  Root(const Scratch& scratch, const std::string& name) : scratch_(scratch), name_(name) {
    scratch.makeFolders(name);
  }

  void profile(const std::string& name, std::optional<int> store, std::optional<int> log = {}) {
    ini_ += "[Profile" + std::to_string(++count_) + "]\nPath=" + name + "\n";
    scratch_.write(name_ + "/profiles.ini", ini_);
    scratch_.makeFolders(name_ + "/" + name);
    if (store) file(name + "/cookies.sqlite", *store);
    if (log) file(name + "/cookies.sqlite-wal", *log);
  }

  Text text() const { return scratch_.text(name_); }
  LiveProfile live(const std::string& name) const {
    return {text(), scratch_.text(name_ + "/" + name)};
  }

 private:
  void file(const std::string& name, int seconds) {
    scratch_.write(name_ + "/" + name, "");
    setModified(scratch_.text(name_ + "/" + name), seconds);
  }

  const Scratch& scratch_;
  std::string name_;
  std::string ini_;
  int count_ = 0;
};

}  // namespace

TEST(FirefoxProfiles, RootsOfAUser) {
  const Folders below = {u"/.mozilla/firefox", u"/snap/firefox/common/.mozilla/firefox",
                         u"/.var/app/org.mozilla.firefox/.mozilla/firefox",
                         u"/.var/app/org.mozilla.firefox/config/mozilla/firefox"};
  const struct {
    Text home;
    Text xdgConfigHome;
    Text first;
    Text begin;
  } rows[] = {
      {u"/home/a", u"", u"/home/a/.config/mozilla/firefox", u"/home/a"},
      {u"/home/a", u"/c", u"/c/mozilla/firefox", u"/home/a"},
      {u"/home/a", u"c", u"/home/a/.config/mozilla/firefox", u"/home/a"},
      {u"/", u"/", u"/mozilla/firefox", u""},
  };
  for (const auto& row : rows) {
    Folders expected = {row.first};
    for (const Text& folder : below) expected.push_back(row.begin + folder);
    EXPECT_EQ(firefoxRoots(row.home, row.xdgConfigHome), expected);
  }
}

TEST(FirefoxProfiles, TheInstallationsOwnComesFirstThenTheDefaultOne) {
  EXPECT_EQ(profileFolders(kFreshInstallation, u"/r"),
            native({u"/r/used.default-esr", u"/r/unused.default"}));
}

TEST(FirefoxProfiles, TheOrderIsThatOfPreferenceThenOfTheFile) {
  EXPECT_EQ(profileFolders("[Profile0]\nPath=c\n[Profile1]\nPath=b\nDefault=1\n"
                           "[Profile2]\nPath=d\nDefault=0\n[InstallB]\nDefault=a\n"
                           "[InstallA]\nDefault=d\n",
                           u"/r"),
            native({u"/r/a", u"/r/d", u"/r/b", u"/r/c"}));
}

TEST(FirefoxProfiles, AnyShapeOfLinesIsRead) {
  const Folders one = native({u"/r/a b"});
  for (const std::string_view ini : {
           "[Profile0]\nPath=a b\n",
           "[Profile0]\r\nPath=a b\r\n",
           "[Profile0]\nPath=a b",
           "\xEF\xBB\xBF[Profile0]\nPath=a b\n",
           "  [Profile0]  \n\t Path \t=  a b \t\n",
           "[ Profile0 ]\nPath=a b\n",
           "[profile0]\nPATH=a b\nisrelative=1\n",
           "[Profile0\nPath=a b\n",
           "Path=lost\n[Profile0]\njunk\n=\n==\n\nPath=a b\n[General]\nPath=other\n",
           "[Profile0]\n;Path=x\n#Path=y\nPath=a b\n;Path=z\n",
           "[Profile0]\nPath=a b\n[Profile1]\nPath=\n[Profile2]\n[Install1]\nDefault=\n[]\n[",
           "[Profile0]\nPath=a b\n[Profile1]\nPath=a b\n[Install1]\nDefault=a b\n",
           "[Profile0]\nPath=x\nPath=a b\n",
       }) {
    EXPECT_EQ(profileFolders(ini, u"/r"), one) << ini;
  }
}

TEST(FirefoxProfiles, NothingNamedIsNothing) {
  using namespace std::string_view_literals;
  for (const std::string_view ini :
       {""sv, "\n\n"sv, "[General]\nVersion=2\n"sv, "Path=a\n"sv, "\xFF\xFE[\0P\0"sv,
        "[Profile0]\nPath=a\0b\n"sv, "[Profile0]\nName=a\n"sv}) {
    EXPECT_TRUE(profileFolders(ini, u"/r").empty());
  }
}

TEST(FirefoxProfiles, AProfileMayBeAnywhere) {
  const std::string whole = elsewhere();
  const struct {
    std::string keys;
    Folders folders;
  } rows[] = {
      {"Path=Profiles/a\nIsRelative=1", {u"/r/Profiles/a"}},
      {"Path=../a\nIsRelative=1", {u"/r/../a"}},
      {"Path=" + whole + "\nIsRelative=0", {fromUtf8(whole)}},
      {"IsRelative=0\nPath=" + whole, {fromUtf8(whole)}},
      {"Path=" + whole, {fromUtf8(whole)}},
      {"Path=a\nIsRelative=0", {}},
      {"Path=\xC3\xA9", {u"/r/é"}},
      {"Path=\xE9", {u"/r/\xDCE9"}},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(profileFolders("[Profile0]\n" + row.keys, u"/r"), native(row.folders)) << row.keys;
  }
}

TEST(FirefoxProfiles, AnInstallationMayNameAProfileElsewhere) {
  const std::string whole = elsewhere();
  EXPECT_EQ(profileFolders(
                "[Install1]\nDefault=" + whole + "\n[Profile0]\nIsRelative=0\nPath=" + whole + "\n",
                u"/r"),
            Folders{fromUtf8(whole)});
}

TEST(LiveProfile, TheNewestLogTells) {
  const Scratch scratch;
  Root root(scratch, "r");
  root.profile("a", 0, -30);
  root.profile("b", -100, -10);
  root.profile("c", -5, -20);
  EXPECT_EQ(liveProfile({root.text()}), root.live("b"));
}

TEST(LiveProfile, WithoutALogTheStoreTells) {
  const Scratch scratch;
  Root root(scratch, "r");
  root.profile("a", -30);
  root.profile("b", -10);
  root.profile("c", -50, -20);
  EXPECT_EQ(liveProfile({root.text()}), root.live("b"));
  root.profile("d", -50, -5);
  EXPECT_EQ(liveProfile({root.text()}), root.live("d"));
}

TEST(LiveProfile, ALogWithoutAStoreIsNoCandidate) {
  const Scratch scratch;
  Root root(scratch, "r");
  root.profile("a", std::nullopt, 0);
  root.profile("b", -100);
  EXPECT_EQ(liveProfile({root.text()}), root.live("b"));
}

TEST(LiveProfile, AllRootsAreCompared) {
  const Scratch scratch;
  Root first(scratch, "first");
  Root second(scratch, "second");
  first.profile("a", -10, -20);
  second.profile("b", -10, -5);
  const Folders roots = {scratch.text("missing"), first.text(), second.text()};
  EXPECT_EQ(liveProfile(roots), second.live("b"));
  setModified(scratch.text("first/a/cookies.sqlite-wal"), 0);
  EXPECT_EQ(liveProfile(roots), first.live("a"));
}

TEST(LiveProfile, AmongEqualsThePreferredOneIsTaken) {
  const Scratch scratch;
  scratch.write("profiles.ini", "[Profile0]\nPath=a\n[Profile1]\nPath=b\nDefault=1\n");
  for (const char* name : {"a/cookies.sqlite", "b/cookies.sqlite"}) scratch.write(name, "");
  std::filesystem::last_write_time(
      toPath(scratch.text("a/cookies.sqlite")),
      std::filesystem::last_write_time(toPath(scratch.text("b/cookies.sqlite"))));
  EXPECT_EQ(liveProfile({scratch.text()}), (LiveProfile{scratch.text(), scratch.text("b")}));
}

TEST(LiveProfile, WithoutAnyStoreThePreferredFolderThatExistsIsTaken) {
  const Scratch scratch;
  scratch.write("profiles.ini", "[Profile0]\nPath=a\n[Profile1]\nPath=b\n[Install1]\nDefault=gone\n"
                                "[Profile2]\nPath=file\nDefault=1\n");
  scratch.write("file", "");
  scratch.makeFolders("a");
  scratch.makeFolders("b/cookies.sqlite");
  EXPECT_EQ(liveProfile({scratch.text()}), (LiveProfile{scratch.text(), scratch.text("a")}));
}

TEST(LiveProfile, WithoutARootThereIsNone) {
  const Scratch scratch;
  scratch.makeFolders("empty");
  scratch.makeFolders("odd/profiles.ini");
  EXPECT_EQ(liveProfile({}), std::nullopt);
  EXPECT_EQ(liveProfile({scratch.text("missing"), scratch.text("empty"), scratch.text("odd")}),
            std::nullopt);
}
