// SPDX-License-Identifier: GPL-3.0-or-later
#include "WindowsSupport.h"

namespace {

TEST(System, AnUnsetOrEmptyVariableIsNothing) {
  EXPECT_EQ(environmentVariable("TAVROLLO_ESSAI"), std::nullopt);
  const Variable empty("TAVROLLO_VIDE", u"");
  EXPECT_EQ(environmentVariable("TAVROLLO_VIDE"), std::nullopt);
  const Text value = u"é 日 " + Text(1000, u'x');
  const Variable variable("TAVROLLO_ESSAI", value);
  EXPECT_EQ(environmentVariable("TAVROLLO_ESSAI"), value);
}

TEST(System, TheCurrentFolderHasADrive) { EXPECT_EQ(currentFolder().substr(1, 2), u":\\"); }

TEST(System, TheExecutableIsThisTest) {
  EXPECT_EQ(nameOf(executablePath()), u"test_system.exe");
  EXPECT_TRUE(FileExists(executablePath()));
}

TEST(System, TheHomeFolderHasNoTrailingSeparator) {
  const Variable home("USERPROFILE", u"C:\\Users\\é\\");
  EXPECT_EQ(homeFolder(), u"C:\\Users\\é");
  const Variable root("USERPROFILE", u"C:\\");
  EXPECT_EQ(homeFolder(), u"C:\\");
}

TEST(System, WithoutTheVariableTheSystemKnowsTheHome) {
  const Variable none("USERPROFILE", u"");
  EXPECT_TRUE(std::filesystem::is_directory(toPath(homeFolder())));
}

TEST(System, OnlyAFolderThatTakesFilesIsWritable) {
  const Scratch scratch;
  scratch.write("file", "");
  EXPECT_TRUE(isWritableFolder(scratch.text()));
  EXPECT_EQ(scratch.entries(), 1u);
  EXPECT_FALSE(isWritableFolder(scratch.text("file")));
  EXPECT_FALSE(isWritableFolder(scratch.text("missing")));
  EXPECT_FALSE(isWritableFolder(u""));
}

TEST(System, TheVersionIsTheOneThatHasALabel) {
  EXPECT_EQ(systemVersion(), (SystemVersion{.platform = 2, .major = 6, .minor = 2}));
}

TEST(System, WindowsShowsItsVersionItself) { EXPECT_EQ(describeSystem(), std::nullopt); }

TEST(System, TheRuntimeFolderIsMadeWhereTheUsersDataIs) {
  const Scratch scratch;
  const Variable data("LOCALAPPDATA", scratch.text() + u"\\");
  EXPECT_EQ(runtimeFolder(), scratch.text("Tavrollo"));
  EXPECT_TRUE(std::filesystem::is_directory(toPath(scratch.text("Tavrollo"))));
  EXPECT_EQ(runtimeFolder(), scratch.text("Tavrollo"));
}

TEST(System, WhereItCannotBeMadeTheHomeHasToDo) {
  const Scratch scratch;
  scratch.write("Tavrollo", "a file in the way");
  const Variable data("LOCALAPPDATA", scratch.text());
  EXPECT_EQ(runtimeFolder(), homeFolder());
}

}  // namespace
