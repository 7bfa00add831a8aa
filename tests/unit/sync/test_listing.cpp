// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include "SyncSupport.h"
#include "support/Processes.h"
#include "sync/Listing.h"

namespace {

using Paths = std::vector<std::string>;

class ListingTest : public ::testing::Test {
 protected:
  Listing list(const Text& pattern = u"*.*", Side side = Side::Source) {
    return listFolder(scratch.text() + nativeSeparator(), pattern, side, progress);
  }

  Scratch scratch;
  RecordingProgress progress;
};

TEST_F(ListingTest, AFilesRowIs32Bytes) { EXPECT_EQ(sizeof(ListedFile), 32u); }

TEST_F(ListingTest, AFoldersFilesComeBeforeThoseOfItsSubFoldersAndAreSorted) {
  for (const char* name : {"b", "a", "z/1", "c/deep/x", "c/y", "m"}) scratch.write(name, "");
  EXPECT_EQ(pathsOf(list()), (Paths{"a", "b", "m", "c/y", "z/1", "c/deep/x"}));
}

TEST_F(ListingTest, AFileHasItsTimeInWholeSecondsAndItsSize) {
  setTime(scratch.write("a", "12345"), kOld);
  const Listing listing = list();
  ASSERT_EQ(listing.files.size(), 1u);
  EXPECT_EQ(listing.files[0].state, (FileState{.modified = kOld, .size = 5}));
  EXPECT_EQ(listing.root, scratch.text() + nativeSeparator());
  EXPECT_FALSE(listing.rootMissing);
}

TEST_F(ListingTest, FilesWithADotInFrontAreLeftOutButSuchFoldersAreNot) {
  scratch.write(".hidden", "");
  scratch.write(".folder/seen", "");
  scratch.write(".folder/.hidden", "");
  EXPECT_EQ(pathsOf(list()), Paths{".folder/seen"});
}

TEST_F(ListingTest, APatternMeansFilesAndEveryFolderIsSearched) {
  for (const char* name : {"a.doc", "b.txt", "sub/C.DOC", "sub/d", "x.doc/e.txt"}) {
    scratch.write(name, "");
  }
  EXPECT_EQ(pathsOf(list(u"*.doc")), (Paths{"a.doc", "sub/C.DOC"}));
  EXPECT_EQ(list(u"").files.size(), 5u);
  EXPECT_EQ(list(u"*.*").files.size(), 5u);
  EXPECT_EQ(list(u"*").files.size(), 5u);
}

#ifndef TAVROLLO_WITHOUT_POSIX  // names are no bytes there
TEST_F(ListingTest, NamesKeepTheirBytes) {
  const Paths names = {"\xFF\xFE", "A", "a", "back\\slash", "caf\xE9", "two\nlines"};
  for (const std::string& name : names) scratch.write(name, "");
  Paths found = pathsOf(list());
  EXPECT_EQ(Paths(found.begin(), found.end() - 1), Paths(names.begin() + 1, names.end()));
  EXPECT_EQ(found.back(), names.front());
}
#endif

#ifndef TAVROLLO_WITHOUT_POSIX  // they make links, pipes and closed folders
TEST_F(ListingTest, LinksToFoldersAreObstaclesAndALoopEnds) {
  scratch.write("real/a", "");
  ::symlink("../real", scratch.path("real/loop").c_str());
  ::symlink("real/a", scratch.path("file").c_str());
  const Listing listing = list();
  EXPECT_EQ(pathsOf(listing), (Paths{"file", "real/a"}));
  ASSERT_EQ(listing.obstacles.size(), 1u);
  EXPECT_EQ(listing.obstacles[0].path, "real/loop");
  EXPECT_EQ(listing.obstacles[0].kind, ObstacleKind::FolderLink);
  EXPECT_EQ(progress.lines, (Paths{"Synchronisation - non comparé : " + scratch.path() +
                                   "/real/loop : lien vers un dossier"}));
}

TEST_F(ListingTest, PipesAndLinksToNothingAreObstacles) {
  ASSERT_EQ(::mkfifo(scratch.path("pipe").c_str(), 0644), 0);
  ::symlink("nowhere", scratch.path("dangling").c_str());
  scratch.write("z", "");
  const Listing listing = list();
  EXPECT_EQ(pathsOf(listing), Paths{"z"});
  ASSERT_EQ(listing.obstacles.size(), 2u);
  EXPECT_EQ(listing.obstacles[0].kind, ObstacleKind::Unreadable);
  EXPECT_EQ(listing.obstacles[1].kind, ObstacleKind::Special);
  EXPECT_EQ(
      progress.lines,
      (Paths{
          "Synchronisation - non comparé : " + scratch.path() + "/dangling : Fichier introuvable",
          "Synchronisation - non comparé : " + scratch.path() + "/pipe : ni fichier ni dossier"}));
}

TEST_F(ListingTest, AFolderThatMayNotBeReadIsAnObstacleAndTheRestIsListed) {
  scratch.write("a/1", "");
  scratch.write("closed/2", "");
  scratch.write("z/3", "");
  ::chmod(scratch.path().c_str(), 0755);
  ::chmod(scratch.path("closed").c_str(), 0);
  EXPECT_EQ(inChildWithoutRights([&] {
              const Listing listing = list();
              const bool right = pathsOf(listing) == Paths{"a/1", "z/3"} &&
                                 listing.obstacles.size() == 1 &&
                                 listing.obstacles[0].path == "closed" &&
                                 listing.obstacles[0].failure.number == 70;
              return right ? 0 : 1;
            }),
            0);
  ::chmod(scratch.path("closed").c_str(), 0755);
}

TEST_F(ListingTest, ARootThatMayNotBeReadIsNotMissing) {
  scratch.makeFolders("closed");
  ::chmod(scratch.path().c_str(), 0755);
  ::chmod(scratch.path("closed").c_str(), 0);
  EXPECT_EQ(inChildWithoutRights([&] {
              const Listing listing = listFolder(scratch.text("closed") + nativeSeparator(), u"",
                                                 Side::Source, progress);
              const bool right = !listing.rootMissing && listing.obstacles.size() == 1 &&
                                 listing.obstacles[0].path.empty();
              return right ? 0 : 1;
            }),
            0);
}
#endif

TEST_F(ListingTest, AMissingRootIsEmptyAndSaysSo) {
  const Listing listing =
      listFolder(scratch.text("no") + nativeSeparator(), u"", Side::Source, progress);
  EXPECT_TRUE(listing.rootMissing);
  EXPECT_TRUE(listing.files.empty());
  EXPECT_TRUE(listing.obstacles.empty());
}

TEST_F(ListingTest, TheProgressIsToldEachFolderAndTheCountSoFar) {
  scratch.write("a", "");
  scratch.write("b", "");
  scratch.write("sub/c", "");
  scratch.write("sub/deep/d", "");
  list(u"*.*", Side::Backup);
  const std::string root = "backup " + slashed(scratch.path());
  EXPECT_EQ(progress.listed, (Paths{root + "/ 0", root + "/sub/ 2", root + "/sub/deep/ 3"}));
}

TEST_F(ListingTest, AFolderOfManyFilesYieldsOnTheWay) {
  for (int i = 0; i < 2500; ++i) scratch.write(std::to_string(i), "");
  EXPECT_EQ(list().files.size(), 2500u);
  EXPECT_EQ(progress.listed.size(), 3u);
}

TEST_F(ListingTest, TheProgressStopsTheListing) {
  scratch.write("a", "");
  scratch.write("sub/b", "");
  progress.stopListing = [](std::size_t call) { return call == 2; };
  const Listing listing = list();
  EXPECT_TRUE(listing.stopped);
  EXPECT_EQ(progress.listed.size(), 2u);
  EXPECT_EQ(pathsOf(listing), Paths{"a"});
}

TEST_F(ListingTest, WhatInterruptedCopiesLeftIsToldApart) {
  scratch.write("sub/.tavrollo-copie-999999999-1-0.tmp", "");
  scratch.write("sub/a", "");
  const Listing listing = list(u"*.doc");
  EXPECT_TRUE(listing.files.empty());
  ASSERT_EQ(listing.leftovers.size(), 1u);
  EXPECT_EQ(plain(listing.leftovers[0]), "sub/.tavrollo-copie-999999999-1-0.tmp");
}

#ifndef TAVROLLO_WITHOUT_POSIX  // Wine's own paths end at 4096 bytes
TEST_F(ListingTest, PathsMayBeLongerThanTheSystemTakesAtOnce) {
  FolderTree tree;
  ASSERT_FALSE(tree.open(scratch.text()));
  std::string path = std::string(250, 'd');
  for (int i = 0; i < 19; ++i) path += "/" + std::string(250, 'd');
  ASSERT_FALSE(tree.makeFolder(path));
  ASSERT_GT(path.size(), 4096u);
  const Listing listing = list();
  EXPECT_TRUE(listing.obstacles.empty());
  EXPECT_EQ(progress.listed.size(), 21u);
}
#endif

TEST_F(ListingTest, AnEmptiedListingIsEmpty) {
  scratch.write("a", "");
  Listing listing = list();
  ViderListe(listing);
  EXPECT_TRUE(listing.files.empty());
  EXPECT_TRUE(listing.names.empty());
  EXPECT_TRUE(listing.root.empty());
}

}  // namespace
