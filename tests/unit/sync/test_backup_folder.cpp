// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include "support/Scratch.h"
#include "sync/BackupFolder.h"

namespace {

TEST(BackupFolder, ExistsAndHasThreeCharactersOrMore) {
  const Scratch scratch;
  scratch.write("fichier", "x");
  EXPECT_TRUE(isBackupFolder(scratch.text()));
  EXPECT_TRUE(isBackupFolder(scratch.text() + u"/"));
  EXPECT_FALSE(isBackupFolder(scratch.text("absent")));
  EXPECT_FALSE(isBackupFolder(scratch.text("fichier")));
  EXPECT_FALSE(isBackupFolder(u""));
  EXPECT_FALSE(isBackupFolder(u"E:"));
  EXPECT_FALSE(isBackupFolder(u".")) << "a folder, but too short";
  EXPECT_FALSE(isBackupFolder(u".."));
}

TEST(BackupFolder, TheHomeDriveComesFirst) {
  EXPECT_EQ(homeDriveRoot({.homeDrive = u"/mnt", .user = u"prof", .home = u"/home/prof"}),
            u"/mnt" + Text(1, nativeSeparator()));
}

#ifndef TAVROLLO_WITHOUT_POSIX  // there is always a drive on Windows
TEST(BackupFolder, WithoutDrivesItIsWhereTheSticksAre) {
  const Scratch scratch;
  const DrivePlaces places{
      .homeDrive = {}, .user = u"prof", .home = scratch.text(), .mountRoot = scratch.text()};
  EXPECT_EQ(homeDriveRoot(places), scratch.text() + u"/");
  scratch.makeFolders("media/prof");
  EXPECT_EQ(homeDriveRoot(places), scratch.text("media/prof") + u"/");
  scratch.makeFolders("run/media/prof");
  EXPECT_EQ(homeDriveRoot(places), scratch.text("run/media/prof") + u"/");

  DrivePlaces nobody = places;
  nobody.user.clear();
  EXPECT_EQ(homeDriveRoot(nobody), scratch.text() + u"/");
}

TEST(BackupFolder, AHomeThatIsMissingOrTheTopOfAllFoldersIsNone) {
  const Scratch scratch;
  const DrivePlaces places{
      .homeDrive = {}, .user = {}, .home = scratch.text("absent"), .mountRoot = {}};
  EXPECT_EQ(homeDriveRoot(places), u"");
  for (const Text& top : {Text(u"/"), Text(u"//"), Text()}) {
    DrivePlaces atTheTop = places;
    atTheTop.home = top;
    EXPECT_EQ(homeDriveRoot(atTheTop), u"");
  }
}
#endif

}  // namespace
