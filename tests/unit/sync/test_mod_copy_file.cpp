// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>
#ifndef TAVROLLO_WITHOUT_POSIX
#include <fcntl.h>
#include <sys/stat.h>
#endif

#include "SyncSupport.h"
#include "support/Doubles.h"
#include "support/Processes.h"
#include "sync/modCopyFile.h"

namespace {

class CopyFileTest : public ::testing::Test {
 protected:
  bool copy(std::string_view from, std::string_view to, std::int16_t failIfExists = 0) {
    return CopierFichier(scratch.text(from), scratch.text(to), failIfExists, questions, &why);
  }

  Scratch scratch;
  Journal journal;
  ScriptedQuestions questions{journal};
  Failure why;
};

TEST_F(CopyFileTest, AFileIsCopiedWithItsTime) {
  setTime(scratch.write("a", "content", 0640), kOld);
  EXPECT_TRUE(copy("a", "b"));
  EXPECT_EQ(scratch.read("b"), "content");
  EXPECT_EQ(timeOf(scratch.path("b")), kOld);
  EXPECT_FALSE(why);
}

TEST_F(CopyFileTest, AnExistingFileIsOverwrittenWhateverItsTime) {
  setTime(scratch.write("a", "old"), kOld);
  setTime(scratch.write("b", "new"), kNew);
  EXPECT_TRUE(copy("a", "b"));
  EXPECT_EQ(scratch.read("b"), "old");
  EXPECT_EQ(scratch.entries(), 2u);
}

TEST_F(CopyFileTest, WithTheFlagAnExistingFileStays) {
  scratch.write("a", "new");
  scratch.write("b", "old");
  EXPECT_FALSE(copy("a", "b", 1));
  EXPECT_EQ(scratch.read("b"), "old");
  EXPECT_EQ(why.number, 58);
  EXPECT_TRUE(copy("a", "c", 1));
  EXPECT_EQ(scratch.read("c"), "new");
}

TEST_F(CopyFileTest, MissingFoldersAreMade) {
  scratch.write("a", "content");
  EXPECT_TRUE(copy("a", "x/y/b"));
  EXPECT_EQ(scratch.read("x/y/b"), "content");
}

TEST_F(CopyFileTest, AMissingSourceIsFalseWithoutABox) {
  scratch.write("b", "kept");
  EXPECT_FALSE(copy("a", "b"));
  EXPECT_EQ(why, (Failure{53, u"Fichier introuvable"}));
  EXPECT_FALSE(copy("no/a", "b"));
  EXPECT_EQ(scratch.read("b"), "kept");
  EXPECT_TRUE(journal.empty());
}

TEST_F(CopyFileTest, AFolderThatCannotBeMadeIsToldAndTheCopyFails) {
  scratch.write("a", "content");
  scratch.write("file", "");
  questions.answers = {Answer::Ok};
  EXPECT_FALSE(copy("a", "file/b"));
  ASSERT_EQ(questions.boxes.size(), 1u);
  EXPECT_TRUE(questions.boxes[0].text.starts_with(u"Erreur dans CreateSubDir\n"));
}

TEST_F(CopyFileTest, BothSeparatorsAreTaken) {
  scratch.write("d/a", "content");
  const Text folder = scratch.text("d");
  EXPECT_TRUE(CopierFichier(folder + u"\\a", folder + u"\\e\\b", 0, questions));
  EXPECT_EQ(scratch.read("d/e/b"), "content");
}

#ifndef TAVROLLO_WITHOUT_POSIX  // it forks
TEST_F(CopyFileTest, APathWithoutAFolderIsInTheCurrentOne) {
  scratch.write("a", "content");
  EXPECT_EQ(inChild([&] {
              if (::chdir(scratch.path().c_str()) != 0) return 2;
              return CopierFichier(u"a", u"b", 0, questions) ? 0 : 1;
            }),
            0);
  EXPECT_EQ(scratch.read("b"), "content");
}
#endif

TEST_F(CopyFileTest, WhatAnInterruptedCopyLeftBesideTheDestinationGoes) {
  scratch.write("a", "content");
  scratch.write("to/.tavrollo-copie-999999999-1-0.tmp", "half");
  EXPECT_TRUE(copy("a", "to/b"));
  EXPECT_EQ(scratch.namesIn("to"), std::vector<std::string>{"b"});
}

#ifndef TAVROLLO_WITHOUT_POSIX  // a link, and a time in half seconds
TEST_F(CopyFileTest, ALinkedDestinationStaysALink) {
  scratch.write("a", "new");
  scratch.write("far/real", "old");
  ::symlink("far/real", scratch.path("link").c_str());
  EXPECT_TRUE(copy("a", "link"));
  EXPECT_TRUE(std::filesystem::is_symlink(scratch.path("link")));
  EXPECT_EQ(scratch.read("far/real"), "new");
}

TEST_F(CopyFileTest, AFileFromBefore1970IsCopied) {
  const std::string path = scratch.write("a", "content");
  const timespec half{.tv_sec = -100, .tv_nsec = 500'000'000};
  const timespec times[2] = {half, half};
  ASSERT_EQ(::utimensat(AT_FDCWD, path.c_str(), times, 0), 0);
  EXPECT_TRUE(copy("a", "b"));
  EXPECT_TRUE(copy("a", "b"));
  EXPECT_EQ(timeOf(scratch.path("b")), -100);
}
#endif

}  // namespace
