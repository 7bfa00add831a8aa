// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include "support/Doubles.h"
#include "support/Processes.h"
#include "sync/SyncTexts.h"
#include "sync/modCreateSubDir.h"
#include "text/Paths.h"

namespace {

class CreateSubDir : public ::testing::Test {
 protected:
  bool isFolder(std::string_view name) const {
    return std::filesystem::is_directory(scratch.path(name));
  }

  Scratch scratch;
  Journal journal;
  ScriptedQuestions questions{journal};
};

TEST_F(CreateSubDir, EveryMissingFolderOfThePathIsMade) {
  scratch.makeFolders("sauvegarde");
  CreerSousDossiers(scratch.text("sauvegarde/docs/2017"), questions);
  EXPECT_TRUE(isFolder("sauvegarde/docs/2017"));
  CreerSousDossiers(scratch.text("a/b") + nativeSeparator(), questions);
  EXPECT_TRUE(isFolder("a/b"));
  CreerSousDossiers(scratch.text("a/b"), questions);
  EXPECT_TRUE(journal.empty());
}

TEST_F(CreateSubDir, AnEmptyPathMakesNothing) {
  CreerSousDossiers(u"", questions);
  CreerSousDossiers(u"/", questions);
  EXPECT_TRUE(journal.empty());
}

TEST_F(CreateSubDir, AFileInTheWayIsToldAndStays) {
  scratch.write("file", "kept");
  questions.answers = {Answer::Ok};
  CreerSousDossiers(scratch.text("file/below/deep"), questions);
  ASSERT_EQ(questions.boxes.size(), 1u);
  EXPECT_TRUE(questions.boxes[0].text.starts_with(u"Erreur dans CreateSubDir\n"));
  EXPECT_EQ(questions.boxes[0].buttons, BoxButtons::Ok);
  EXPECT_EQ(scratch.read("file"), "kept");
}

#ifndef TAVROLLO_WITHOUT_POSIX  // it makes a closed folder
TEST_F(CreateSubDir, AFolderThatMayNotBeWrittenIsToldWithItsReason) {
  ::chmod(scratch.path().c_str(), 0555);
  EXPECT_EQ(inChildWithoutRights([&] {
              questions.answers = {Answer::Ok};
              CreerSousDossiers(scratch.text("a/b"), questions);
              const Box expected = createSubDirBox({70, u"Permission refusée"});
              return questions.boxes == std::vector<Box>{expected} ? 0 : 1;
            }),
            0);
  EXPECT_EQ(scratch.entries(), 0u);
}
#endif

}  // namespace
