// SPDX-License-Identifier: GPL-3.0-or-later
#include <algorithm>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <map>
#include <sys/socket.h>
#include <sys/un.h>

#include "platform/linux/TreeRoot.h"
#include "support/Processes.h"

namespace {

using Entries = std::map<std::string, FolderEntry>;

bool everything(NativeView) { return true; }

class FolderTreeTest : public ::testing::Test {
 protected:
  void SetUp() override { ASSERT_FALSE(tree.open(scratch.text())); }

  Entries read(NativeView folder = {}, const FolderTree::Wants& wants = everything) {
    Entries entries;
    failure = tree.read(folder, wants, [&entries](FolderEntry&& entry) {
      entries[entry.name] = entry;
      return true;
    });
    return entries;
  }

  Scratch scratch;
  FolderTree tree;
  Failure failure;
};

TEST_F(FolderTreeTest, AFolderListsItsFilesAndFolders) {
  const std::string path = scratch.write("a", "12345");
  scratch.makeFolders("sub");
  const timespec times[2] = {{.tv_sec = 1, .tv_nsec = 0},
                             {.tv_sec = 1000000000, .tv_nsec = 999999999}};
  ASSERT_EQ(::utimensat(AT_FDCWD, path.c_str(), times, 0), 0);
  const Entries entries = read();
  EXPECT_FALSE(failure);
  ASSERT_EQ(entries.size(), 2u);
  EXPECT_EQ(entries.at("a").kind, EntryKind::File);
  EXPECT_EQ(entries.at("a").state, (FileState{.modified = 1000000000, .size = 5}));
  EXPECT_EQ(entries.at("sub").kind, EntryKind::Folder);
}

TEST_F(FolderTreeTest, WhatIsBelowASecondIsCutOffAlsoBefore1970) {
  const std::string path = scratch.write("old", "");
  const timespec times[2] = {{.tv_sec = 0, .tv_nsec = 0}, {.tv_sec = -10, .tv_nsec = 500000000}};
  ASSERT_EQ(::utimensat(AT_FDCWD, path.c_str(), times, 0), 0);
  EXPECT_EQ(read().at("old").state.modified, -10);
}

TEST_F(FolderTreeTest, AFolderIsReadFromTheStartEachTime) {
  scratch.write("a", "");
  EXPECT_EQ(read().size(), 1u);
  EXPECT_EQ(read().size(), 1u);
}

TEST_F(FolderTreeTest, NamesStayTheBytesThatTheyAre) {
  const std::string names[] = {"caf\xE9", "two\nlines", "tab\there", "back\\slash", "\xFF\xFE"};
  for (const std::string& name : names) scratch.write(name, "");
  const Entries entries = read();
  for (const std::string& name : names) EXPECT_TRUE(entries.contains(name)) << name;
  EXPECT_EQ(entries.size(), std::size(names));
}

TEST_F(FolderTreeTest, ALinkToAFileIsTheFileItNames) {
  scratch.write("far/file", "123");
  ::symlink("far/file", scratch.path("link").c_str());
  EXPECT_EQ(read().at("link").kind, EntryKind::File);
  EXPECT_EQ(read().at("link").state.size, 3u);
}

TEST_F(FolderTreeTest, ALinkToAFolderIsToldAndNotFollowed) {
  scratch.write("far/file", "");
  ::symlink("far", scratch.path("link").c_str());
  ::symlink(".", scratch.path("loop").c_str());
  EXPECT_EQ(read().at("link").kind, EntryKind::FolderLink);
  EXPECT_EQ(read().at("loop").kind, EntryKind::FolderLink);
  EXPECT_TRUE(read("link").empty());
  EXPECT_TRUE(failure);
}

TEST_F(FolderTreeTest, ALinkThatNamesNothingStandsThereAllTheSame) {
  ::symlink("nowhere", scratch.path("dangling").c_str());
  ::symlink("itself", scratch.path("itself").c_str());
  EXPECT_EQ(read().at("dangling").kind, EntryKind::Unreadable);
  EXPECT_EQ(read().at("dangling").failure, (Failure{53, u"Fichier introuvable"}));
  EXPECT_EQ(read().at("itself").kind, EntryKind::Unreadable);
}

TEST_F(FolderTreeTest, PipesSocketsAndDevicesAreSpecialAndDoNotBlock) {
  ASSERT_EQ(::mkfifo(scratch.path("pipe").c_str(), 0644), 0);
  const int listener = ::socket(AF_UNIX, SOCK_STREAM, 0);
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  scratch.path("socket").copy(address.sun_path, sizeof address.sun_path - 1);
  ASSERT_EQ(::bind(listener, reinterpret_cast<sockaddr*>(&address), sizeof address), 0);
  ::symlink("/dev/null", scratch.path("device").c_str());
  const Entries entries = read();
  EXPECT_EQ(entries.at("pipe").kind, EntryKind::Special);
  EXPECT_EQ(entries.at("socket").kind, EntryKind::Special);
  EXPECT_EQ(entries.at("device").kind, EntryKind::Special);
  ::close(listener);
}

TEST_F(FolderTreeTest, WhatIsNotWantedIsLeftOutButFoldersNeverAre) {
  scratch.write("a.doc", "");
  scratch.write("b.txt", "");
  scratch.write("sub/c", "");
  ::symlink("sub", scratch.path("link").c_str());
  ::symlink("nowhere", scratch.path("dangling").c_str());
  ASSERT_EQ(::mkfifo(scratch.path("pipe").c_str(), 0644), 0);
  const Entries entries = read({}, [](NativeView name) { return name.ends_with(".doc"); });
  EXPECT_EQ(entries.size(), 3u);
  EXPECT_TRUE(entries.contains("a.doc"));
  EXPECT_EQ(entries.at("sub").kind, EntryKind::Folder);
  EXPECT_EQ(entries.at("link").kind, EntryKind::FolderLink);
}

TEST_F(FolderTreeTest, TheVisitorEndsTheReading) {
  scratch.write("a", "");
  scratch.write("b", "");
  int seen = 0;
  EXPECT_FALSE(tree.read({}, everything, [&seen](FolderEntry&&) {
    ++seen;
    return false;
  }));
  EXPECT_EQ(seen, 1);
}

TEST_F(FolderTreeTest, AFolderThatMayNotBeReadIsAFailure) {
  scratch.makeFolders("closed");
  ::chmod(scratch.path().c_str(), 0755);
  ::chmod(scratch.path("closed").c_str(), 0);
  EXPECT_EQ(inChildWithoutRights([&] {
              read("closed");
              return failure.number;
            }),
            70);
}

TEST_F(FolderTreeTest, AFileWhoseAttributesMayNotBeReadIsUnreadable) {
  scratch.write("closed/a", "");
  ::chmod(scratch.path().c_str(), 0755);
  ::chmod(scratch.path("closed").c_str(), 0444);  // names, and nothing behind them
  EXPECT_EQ(inChildWithoutRights(
                [&] { return read("closed").at("a").kind == EntryKind::Unreadable ? 0 : 1; }),
            0);
}

TEST_F(FolderTreeTest, AMissingRootIsToldFromOneThatMayNotBeRead) {
  FolderTree other;
  bool missing = false;
  EXPECT_EQ(other.open(scratch.text("nowhere"), &missing).number, 76);
  EXPECT_TRUE(missing);
  EXPECT_EQ(other.open(u"", &missing).number, 76);
  EXPECT_TRUE(missing);
  scratch.write("file", "");
  EXPECT_EQ(other.open(scratch.text("file"), &missing).number, 76);
  EXPECT_TRUE(missing);
  EXPECT_FALSE(other.open(scratch.text(), &missing));
  EXPECT_FALSE(missing);

  scratch.makeFolders("closed");
  ::chmod(scratch.path().c_str(), 0755);
  ::chmod(scratch.path("closed").c_str(), 0);
  const Text closed = scratch.text("closed");
  EXPECT_EQ(inChildWithoutRights([&] { return other.open(closed, &missing).number; }), 70);
  EXPECT_FALSE(missing);
}

TEST_F(FolderTreeTest, ANulInARootNamesNothing) {
  FolderTree other;
  EXPECT_TRUE(other.open(scratch.text() + Text(1, u'\0')));
}

TEST_F(FolderTreeTest, TheRootMayBeALink) {
  scratch.write("real/a", "");
  ::symlink("real", scratch.path("link").c_str());
  ASSERT_FALSE(tree.open(scratch.text("link")));
  EXPECT_TRUE(read().contains("a"));
}

TEST_F(FolderTreeTest, PathsMayBeLongerThanTheSystemTakesAtOnce) {
  const std::string step(250, 'd');
  std::string path;
  for (int i = 0; i < 20; ++i) path += (i == 0 ? "" : "/") + step;
  ASSERT_FALSE(tree.makeFolder(path));
  ASSERT_GT(path.size(), 4096u);
  EXPECT_TRUE(read(path).empty());
  EXPECT_FALSE(failure);
  const std::string above = path.substr(0, path.size() - step.size() - 1);
  EXPECT_EQ(read(above).at(step).kind, EntryKind::Folder);
}

TEST_F(FolderTreeTest, FoldersAreMadeWhereTheyAreMissing) {
  scratch.makeFolders("a");
  EXPECT_FALSE(tree.makeFolder("a/b/c"));
  EXPECT_FALSE(tree.makeFolder("a/b/c"));
  EXPECT_TRUE(std::filesystem::is_directory(scratch.path("a/b/c")));
  scratch.write("file", "");
  EXPECT_EQ(tree.makeFolder("file/d").number, 76);
}

TEST_F(FolderTreeTest, AFolderThatWasTakenAwayIsMadeAnew) {
  ASSERT_FALSE(tree.makeFolder("a/b"));
  std::filesystem::remove_all(scratch.path("a"));
  EXPECT_FALSE(tree.makeFolder("a/b"));
  EXPECT_TRUE(std::filesystem::is_directory(scratch.path("a/b")));
}

TEST_F(FolderTreeTest, FoldersOfOneFileSystemShareItsNumber) {
  FolderTree other;
  EXPECT_EQ(other.fileSystem(), 0u);
  scratch.makeFolders("sub");
  ASSERT_FALSE(other.open(scratch.text("sub")));
  EXPECT_NE(tree.fileSystem(), 0u);
  EXPECT_EQ(other.fileSystem(), tree.fileSystem());
  ASSERT_FALSE(other.open(u"/proc"));
  EXPECT_NE(other.fileSystem(), tree.fileSystem());
}

TEST_F(FolderTreeTest, NoFolderIsMadeThroughALink) {
  Scratch elsewhere;
  ::symlink(elsewhere.path().c_str(), scratch.path("link").c_str());
  EXPECT_TRUE(tree.makeFolder("link/d"));
  EXPECT_EQ(elsewhere.entries(), 0u);
}

TEST_F(FolderTreeTest, NewFoldersAreRememberedUntilTheirEntriesAreOnTheDisk) {
  scratch.makeFolders("sub");
  EXPECT_FALSE(tree.makeFolder("sub"));
  EXPECT_FALSE(tree.root().madeFolder);
  EXPECT_FALSE(tree.makeFolder("sub/new"));
  EXPECT_TRUE(tree.root().madeFolder);

  FolderTree other;
  EXPECT_TRUE(other.open(scratch.text("root")));
  scratch.makeFolders("root");
  EXPECT_FALSE(other.open(scratch.text("root")));
  EXPECT_TRUE(other.root().madeFolder) << "the root itself";
  EXPECT_FALSE(other.open(scratch.text("root")));
  EXPECT_FALSE(other.root().madeFolder);
}

TEST_F(FolderTreeTest, AFileIsRemovedAndALinksTargetStays) {
  scratch.write("sub/a", "");
  scratch.write("b", "kept");
  ::symlink("../b", scratch.path("sub/link").c_str());
  EXPECT_FALSE(tree.remove("sub/a"));
  EXPECT_FALSE(tree.remove("sub/link"));
  EXPECT_TRUE(scratch.namesIn("sub").empty());
  EXPECT_EQ(scratch.read("b"), "kept");
  EXPECT_EQ(tree.remove("sub/a").number, 53);
}

}  // namespace
