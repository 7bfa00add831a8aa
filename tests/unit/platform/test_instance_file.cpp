// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/InstanceFile.h"

#include <gtest/gtest.h>

TEST(InstanceFile, HoldsTheProcessAndTheFolderALineEach) {
  EXPECT_EQ(instanceFileText({.processId = 42, .programFolder = u"/home/Élève/Tavrollo"}),
            "42\n/home/\xC3\x89l\xC3\xA8ve/Tavrollo\n");
}

TEST(InstanceFile, IsReadAsItWasWritten) {
  for (const Text& folder : {Text(u"/home/Łukasz"), Text(u"C:\\Tavrollo"), Text(u"/two\nlines")}) {
    const RunningInstance read =
        parseInstanceFile(instanceFileText({.processId = 7, .programFolder = folder}));
    EXPECT_EQ(read.processId, 7);
    EXPECT_EQ(read.programFolder, folder);
  }
}

TEST(InstanceFile, AnUnfinishedTextTellsNothing) {
  for (const char* bytes : {"", "42", "42\n/home/a", "\n/home/a"}) {
    const RunningInstance read = parseInstanceFile(bytes);
    EXPECT_EQ(read.processId, 0) << bytes;
    EXPECT_EQ(read.programFolder, u"") << bytes;
  }
}

TEST(InstanceFile, AFolderAloneMayBeMissing) {
  EXPECT_EQ(parseInstanceFile("42\n").processId, 42);
  EXPECT_EQ(parseInstanceFile("42\n").programFolder, u"");
}

TEST(InstanceFile, WhatIsNoNumberIsNoProcess) {
  EXPECT_EQ(parseInstanceFile("x\n/home/a\n").processId, 0);
  EXPECT_EQ(parseInstanceFile("99999999999999999999\n/home/a\n").processId, 0);
}
