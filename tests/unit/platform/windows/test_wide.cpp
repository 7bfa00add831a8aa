// SPDX-License-Identifier: GPL-3.0-or-later
#include "WindowsSupport.h"

namespace {

TEST(Wide, APathIsMadeWholeAndFreeOfTheLimit) {
  EXPECT_EQ(longPath(u"C:\\a\\b"), L"\\\\?\\C:\\a\\b");
  EXPECT_EQ(longPath(u"C:/a/é 日"), L"\\\\?\\C:\\a\\é 日");
  EXPECT_EQ(longPath(u"C:\\a\\..\\b\\"), L"\\\\?\\C:\\b\\");
  EXPECT_EQ(longPath(u"\\\\server\\share\\a"), L"\\\\?\\UNC\\server\\share\\a");
  EXPECT_EQ(longPath(u"a"), below(longPath(currentFolder()), L"a"));
}

TEST(Wide, AWholePathStaysAsItIs) {
  EXPECT_EQ(longPath(u"\\\\?\\C:\\a/b."), L"\\\\?\\C:\\a/b.");
  EXPECT_EQ(longPath(u"\\\\.\\pipe\\a"), L"\\\\.\\pipe\\a");
}

TEST(Wide, WhatNamesNothingIsEmpty) {
  EXPECT_EQ(longPath(u""), L"");
  EXPECT_EQ(longPath(Text(u"C:\\a") + Text(1, u'\0') + u"b"), L"");
}

TEST(Wide, PeopleSeeThePlainPath) {
  EXPECT_EQ(plainPath(longPath(u"C:\\a")), L"C:\\a");
  EXPECT_EQ(plainPath(longPath(u"\\\\server\\share\\a")), L"\\\\server\\share\\a");
  EXPECT_EQ(plainPath(L"C:\\a"), L"C:\\a");
}

TEST(Wide, TheRootOfADriveHasItsSeparatorAlready) {
  EXPECT_EQ(below(L"C:\\", L"a"), L"C:\\a");
  EXPECT_EQ(below(L"C:\\a", L"b"), L"C:\\a\\b");
}

}  // namespace
