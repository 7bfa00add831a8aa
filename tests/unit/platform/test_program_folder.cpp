// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include "platform/ProgramFolder.h"
#include "platform/System.h"
#include "support/Processes.h"

namespace {

namespace fs = std::filesystem;

class ProgramFolderTest : public ::testing::Test {
 protected:
  ProgramFolderTest() {
    scratch.write("template/nav/index.html", "page");
    scratch.write("template/nav/res_css/js/a.js", "script", 0444);
    scratch.write("template/modeles/m.rtf", "model");
    scratch.write("template/readme.txt", "read me");
  }

  Failure fill() {
    return fillProgramFolder(scratch.text("home/Tavrollo"), scratch.text("template"));
  }

  Scratch scratch;
  const Text user = nativePath(u"/home/a");
  const Text inHome = nativePath(u"/home/a/Tavrollo");
};

TEST_F(ProgramFolderTest, TheAskedOneIsTaken) {
  scratch.write("bin/config.cfg", "");
  EXPECT_EQ(chooseProgramFolder(scratch.text("asked") + u"/", scratch.text("bin"), user),
            scratch.text("asked"));
}

TEST_F(ProgramFolderTest, ARelativeFolderIsOneOfTheCurrentFolder) {
  EXPECT_EQ(chooseProgramFolder(u"essai/", scratch.text("bin"), user),
            currentFolder() + nativePath(u"/essai"));
  EXPECT_EQ(chooseProgramFolder(u"./a/../essai", scratch.text("bin"), user),
            currentFolder() + nativePath(u"/essai"));
}

TEST_F(ProgramFolderTest, APortableInstallationIsTaken) {
  scratch.write("one/config.cfg", "");
  fs::create_directories(scratch.path("two/nav"));
  EXPECT_EQ(chooseProgramFolder({}, scratch.text("one"), user), scratch.text("one"));
  EXPECT_EQ(chooseProgramFolder({}, scratch.text("two") + u"/", user), scratch.text("two"));
}

TEST_F(ProgramFolderTest, ElseItIsInTheUsersHome) {
  fs::create_directory(scratch.path("bin"));
  EXPECT_EQ(chooseProgramFolder({}, scratch.text("bin"), user), inHome);
  EXPECT_EQ(chooseProgramFolder({}, scratch.text("missing"), user), inHome);
  EXPECT_EQ(chooseProgramFolder(Text(), scratch.text("bin"), user), inHome);
}

#ifndef TAVROLLO_WITHOUT_POSIX  // it makes a closed folder
TEST_F(ProgramFolderTest, AnExecutableFolderThatTakesNoFilesIsNotPortable) {
  scratch.write("bin/config.cfg", "");
  ::chmod(scratch.path().c_str(), 0755);
  ::chmod(scratch.path("bin").c_str(), 0555);
  const Text folder = scratch.text("bin");
  EXPECT_EQ(
      inChildWithoutRights([&] { return chooseProgramFolder({}, folder, user) == inHome ? 0 : 1; }),
      0);
}
#endif

TEST_F(ProgramFolderTest, TheTemplateIsTheInstalledOneElseThatOfTheBuild) {
  fs::create_directories(scratch.path("usr/bin/template"));
  EXPECT_EQ(templateFolder(scratch.text("usr/bin")), scratch.text("usr/bin/template"));
  fs::create_directories(scratch.path("usr/share/tavrollo"));
  EXPECT_EQ(templateFolder(scratch.text("usr/bin")), scratch.text("usr/share/tavrollo"));
  EXPECT_EQ(templateFolder(scratch.text("usr/bin") + u"/"), scratch.text("usr/share/tavrollo"));
  EXPECT_EQ(templateFolder(scratch.text("usr/libexec/tavrollo")),
            scratch.text("usr/share/tavrollo"));
  EXPECT_EQ(templateFolder(scratch.text("elsewhere/bin/deep")), u"");
}

TEST_F(ProgramFolderTest, ANewFolderIsFilled) {
  ASSERT_FALSE(fill());
  EXPECT_EQ(scratch.read("home/Tavrollo/nav/index.html"), "page");
  EXPECT_EQ(scratch.read("home/Tavrollo/nav/res_css/js/a.js"), "script");
  EXPECT_EQ(scratch.read("home/Tavrollo/modeles/m.rtf"), "model");
  EXPECT_EQ(scratch.read("home/Tavrollo/readme.txt"), "read me");
  EXPECT_EQ(scratch.namesIn("home/Tavrollo").size(), 3u);
}

#ifndef TAVROLLO_WITHOUT_POSIX  // it makes a link
TEST_F(ProgramFolderTest, ALinkStaysOne) {
  fs::create_symlink("index.html", scratch.path("template/nav/link.html"));
  ASSERT_FALSE(fill());
  EXPECT_EQ(fs::read_symlink(scratch.path("home/Tavrollo/nav/link.html")), "index.html");
}
#endif

TEST_F(ProgramFolderTest, TheUserMayWriteToEveryCopy) {
  ASSERT_FALSE(fill());
  const fs::perms perms =
      fs::status(scratch.path("home/Tavrollo/nav/res_css/js/a.js")).permissions();
  EXPECT_NE(perms & fs::perms::owner_write, fs::perms::none);
}

TEST_F(ProgramFolderTest, WhatStandsThereIsNeverOverwritten) {
  scratch.write("home/Tavrollo/readme.txt", "mine");
  scratch.write("home/Tavrollo/modeles/other.rtf", "mine");
  ASSERT_FALSE(fill());
  EXPECT_EQ(scratch.read("home/Tavrollo/readme.txt"), "mine");
  EXPECT_EQ(scratch.namesIn("home/Tavrollo/modeles"), std::vector<std::string>{"other.rtf"});
  EXPECT_EQ(scratch.read("home/Tavrollo/nav/index.html"), "page");
}

TEST_F(ProgramFolderTest, AFolderThatHasItsPagesIsLeftAlone) {
  fs::create_directories(scratch.path("home/Tavrollo/nav"));
  EXPECT_FALSE(fill());
  EXPECT_TRUE(scratch.namesIn("home/Tavrollo/nav").empty());
  EXPECT_EQ(scratch.namesIn("home/Tavrollo").size(), 1u);
}

TEST_F(ProgramFolderTest, AnInterruptedFillingIsDoneAnew) {
  scratch.write("home/Tavrollo/.nav.tavrollo-part/half.html", "half");
  ASSERT_FALSE(fill());
  EXPECT_EQ(scratch.read("home/Tavrollo/nav/index.html"), "page");
  EXPECT_FALSE(fs::exists(scratch.path("home/Tavrollo/nav/half.html")));
  EXPECT_FALSE(fs::exists(scratch.path("home/Tavrollo/.nav.tavrollo-part")));
}

#ifndef TAVROLLO_WITHOUT_POSIX  // they make pipes, which cannot be copied
TEST_F(ProgramFolderTest, AFillingThatFailsLeavesNoHalfPages) {
  ASSERT_EQ(::mkfifo(scratch.path("template/nav/zz").c_str(), 0644), 0);
  EXPECT_TRUE(fill());
  EXPECT_FALSE(fs::exists(scratch.path("home/Tavrollo/nav")));
  EXPECT_FALSE(fs::exists(scratch.path("home/Tavrollo/.nav.tavrollo-part")));
}

// The pages tell that a folder is filled, so nothing may be missing once they stand there.
TEST_F(ProgramFolderTest, ThePagesComeLast) {
  for (const std::string name : {"0", "A", "a", "m", "n", "nb", "o", "z", "zz", ".x"}) {
    const std::string pipe = scratch.path("template/" + name);
    ASSERT_EQ(::mkfifo(pipe.c_str(), 0644), 0);
    EXPECT_TRUE(fillProgramFolder(scratch.text("home/" + name), scratch.text("template")));
    EXPECT_FALSE(fs::exists(scratch.path("home/" + name + "/nav"))) << name;
    fs::remove(pipe);
  }
}
#endif

TEST_F(ProgramFolderTest, WithoutATemplateItFails) {
  EXPECT_EQ(fillProgramFolder(scratch.text("home"), u"").number, 76);
  EXPECT_EQ(fillProgramFolder(scratch.text("home"), scratch.text("missing")).number, 76);
  EXPECT_FALSE(fs::exists(scratch.path("home")));
}

TEST_F(ProgramFolderTest, AFolderThatCannotBeMadeIsAFailure) {
  scratch.write("file", "");
  const Failure failure = fillProgramFolder(scratch.text("file/below"), scratch.text("template"));
  EXPECT_EQ(failure.number, 76);
  EXPECT_TRUE(failure.description.ends_with(scratch.text("file/below")));
}

}  // namespace
