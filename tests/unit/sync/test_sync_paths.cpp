// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include "support/Processes.h"
#include "support/Scratch.h"
#include "sync/SyncPaths.h"
#include "text/Paths.h"

namespace {

const Text kSeparator(1, nativeSeparator());

TEST(SyncPaths, ASeparatorIsAppendedWhereThereIsNone) {
  EXPECT_EQ(AjouterAntislash(u""), u"");
  EXPECT_EQ(AjouterAntislash(u"a"), u"a" + kSeparator);
  EXPECT_EQ(AjouterAntislash(u"a" + kSeparator), u"a" + kSeparator);
  EXPECT_EQ(AjouterAntislash(u"E:\\"), u"E:\\");
  EXPECT_EQ(AjouterAntislash(kSeparator), kSeparator);
}

TEST(SyncPaths, TheUsersFilesAndBothPlacesOfTheTable) {
  const Text root = nativePath(u"\\home\\nav\\");
  EXPECT_EQ(userFilesRoot(root), nativePath(u"\\home\\nav\\user_datas\\"));
  EXPECT_EQ(travellingShortcutTable(root), nativePath(u"\\home\\nav\\user_datas\\shortQrCode.js"));
  EXPECT_EQ(liveShortcutTable(root), nativePath(u"\\home\\nav\\res_css\\js\\shortQrCode.js"));
}

TEST(SyncPaths, FoldersOverlapWhenOneIsOrHoldsTheOther) {
  Scratch scratch;
  scratch.makeFolders("nav/user_datas/deep");
  scratch.makeFolders("nav/user_datas2");
  const Text files = scratch.text("nav/user_datas") + u"/";
  EXPECT_TRUE(foldersOverlap(files, files));
  EXPECT_TRUE(foldersOverlap(files, scratch.text("nav/user_datas")));
  EXPECT_TRUE(foldersOverlap(files, scratch.text("nav/user_datas/deep") + u"/"));
  EXPECT_TRUE(foldersOverlap(files, scratch.text("nav/user_datas/not/yet") + u"/"));
  EXPECT_TRUE(foldersOverlap(files, scratch.text("nav") + u"/"));
  EXPECT_TRUE(foldersOverlap(files, fromPath(toPath(files).root_path())));
  EXPECT_FALSE(foldersOverlap(files, scratch.text("nav/user_datas2") + u"/"));
  EXPECT_FALSE(foldersOverlap(files, scratch.text("elsewhere") + u"/"));
  EXPECT_FALSE(foldersOverlap(files, u""));
}

#ifndef TAVROLLO_WITHOUT_POSIX  // it makes a link
TEST(SyncPaths, ALinkDoesNotHideAnOverlap) {
  Scratch scratch;
  scratch.makeFolders("user_datas/deep");
  ::symlink("loop", scratch.path("user_datas/loop").c_str());
  EXPECT_TRUE(foldersOverlap(scratch.text("user_datas"), scratch.text("user_datas/loop/x")));
  ::symlink("user_datas/deep", scratch.path("link").c_str());
  EXPECT_TRUE(foldersOverlap(scratch.text("user_datas"), scratch.text("link") + u"/"));
}
#endif

}  // namespace
