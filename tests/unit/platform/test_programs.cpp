// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include "platform/linux/Programs.h"
#include "support/Processes.h"

namespace {

class ProgramsTest : public ::testing::Test {
 protected:
  Scratch scratch;
  Variable path{"PATH", scratch.path("one") + ":" + scratch.path("two")};
};

TEST_F(ProgramsTest, OnlyWhatTheKernelCanExecuteIsAProgram) {
  scratch.write("script", "#!/bin/sh\n", 0755);
  scratch.write("binary",
                "\x7F"
                "ELF....",
                0755);
  scratch.write("plain script", "#!/bin/sh\n", 0644);
  scratch.write("document.pdf", "%PDF-1.4", 0755);
  scratch.write("almost",
                "\x7F"
                "EL",
                0755);
  scratch.write("empty", "", 0755);
  std::filesystem::create_directory(scratch.path("folder"));
  ::symlink("script", scratch.path("link").c_str());
  EXPECT_TRUE(isProgram(scratch.path("script")));
  EXPECT_TRUE(isProgram(scratch.path("binary")));
  EXPECT_TRUE(isProgram(scratch.path("link")));
  EXPECT_FALSE(isProgram(scratch.path("plain script")));
  EXPECT_FALSE(isProgram(scratch.path("document.pdf")));
  EXPECT_FALSE(isProgram(scratch.path("almost")));
  EXPECT_FALSE(isProgram(scratch.path("empty")));
  EXPECT_FALSE(isProgram(scratch.path("folder")));
  EXPECT_FALSE(isProgram(scratch.path("missing")));
  EXPECT_FALSE(isProgram(""));
}

TEST_F(ProgramsTest, TheFirstFolderOfPathThatHasItWins) {
  scratch.write("one/a", "no program", 0755);
  scratch.script("two/a", "");
  scratch.script("two/b", "");
  scratch.script("one/b", "");
  EXPECT_EQ(programInPath("a"), scratch.path("two/a"));
  EXPECT_EQ(programInPath("b"), scratch.path("one/b"));
  EXPECT_EQ(programInPath("c"), "");
  EXPECT_EQ(programInPath(""), "");
  EXPECT_EQ(programInPath("../two/b"), "");
}

TEST_F(ProgramsTest, WithoutAPathTheSystemsOwnFoldersCount) {
  const Variable unset("PATH", std::nullopt);
  EXPECT_EQ(programInPath("sh"), "/bin/sh");
  const Variable empty("PATH", "");  // the current folder, as wherever a program is started
  EXPECT_EQ(programInPath("sh"), "");
}

}  // namespace
