// SPDX-License-Identifier: GPL-3.0-or-later
#include <cerrno>
#include <gtest/gtest.h>

#include "SyncSupport.h"
#include "support/Doubles.h"
#include "support/Processes.h"
#include "sync/FolderSync.h"
#include "sync/SyncTexts.h"

namespace {

using Lines = std::vector<std::string>;
using Outcome = FolderSync::Outcome;

class FolderSyncTest : public ::testing::Test {
 protected:
  void SetUp() override {
    setTime(scratch.write("nav/res_css/js/shortQrCode.js", "live"), kOld);
    scratch.makeFolders("nav/user_datas");
    scratch.makeFolders("stick");
  }

  Outcome compare(const Text& pattern = u"*.*") {
    return sync.compare(webRoot, scratch.text("stick"), pattern);
  }
  Lines rows() const { return rowsOf(sync.source(), sync.backup(), sync.table().rows); }

  Scratch scratch;
  const Text webRoot = scratch.text("nav") + nativeSeparator();
  Journal journal;
  ScriptedQuestions questions{journal};
  RecordingProgress progress;
  FolderSync sync{questions, progress};
};

TEST_F(FolderSyncTest, TheLiveTableIsPutAmongTheUsersFilesAndComparedWithThem) {
  setTime(scratch.write("nav/user_datas/a", ""), kOld);
  EXPECT_EQ(compare(), Outcome::Different);
  EXPECT_EQ(scratch.read("nav/user_datas/shortQrCode.js"), "live");
  EXPECT_EQ(rows(), (Lines{"0 a -", "0 shortQrCode.js -"}));
  EXPECT_EQ(sync.source().root, scratch.text("nav/user_datas") + nativeSeparator());
  EXPECT_EQ(sync.backup().root, scratch.text("stick") + nativeSeparator());
  EXPECT_EQ(sync.source().files.size(), 2u);
  EXPECT_TRUE(journal.empty());
}

TEST_F(FolderSyncTest, AfterASynchronisationNothingIsLeftAndTheComparisonIsNotTheFirst) {
  scratch.write("nav/user_datas/docs/a", "1");
  scratch.write("stick/b", "2");
  compare();
  EXPECT_TRUE(sync.isFirstComparison());
  EXPECT_EQ(sync.synchronise().copied, 3u);
  EXPECT_FALSE(sync.isFirstComparison());
  EXPECT_EQ(compare(), Outcome::Identical);
  EXPECT_TRUE(sync.table().rows.empty());
  EXPECT_EQ(scratch.read("stick/docs/a"), "1");
  EXPECT_EQ(scratch.read("nav/user_datas/b"), "2");
  EXPECT_EQ(scratch.read("stick/shortQrCode.js"), "live");
}

TEST_F(FolderSyncTest, ARunTellsWhetherTheLiveTableIsAnotherOneNow) {
  setTime(scratch.write("stick/shortQrCode.js", "newer"), kNew);
  compare();
  EXPECT_TRUE(sync.synchronise().shortcutsRestored);
  EXPECT_EQ(scratch.read("nav/res_css/js/shortQrCode.js"), "newer");

  scratch.write("nav/user_datas/a", "1");
  compare();
  const SyncReport second = sync.synchronise();
  EXPECT_EQ(second.copied, 1u);
  EXPECT_FALSE(second.shortcutsRestored);
}

TEST_F(FolderSyncTest, IdenticalFoldersAreIdenticalOnTheFirstComparison) {
  setTime(scratch.write("stick/shortQrCode.js", "live"), kOld + 5);
  EXPECT_EQ(compare(), Outcome::Identical);
  EXPECT_TRUE(progress.lines.empty());
  EXPECT_TRUE(sync.isFirstComparison());
}

TEST_F(FolderSyncTest, ANewerTableOfTheBackupBecomesTheLiveOne) {
  setTime(scratch.write("stick/shortQrCode.js", "from the stick"), kNew);
  compare();
  EXPECT_EQ(rows(), Lines{"3 shortQrCode.js shortQrCode.js"});
  sync.synchronise();
  EXPECT_EQ(scratch.read("nav/res_css/js/shortQrCode.js"), "from the stick");
  EXPECT_EQ(compare(), Outcome::Identical);
}

TEST_F(FolderSyncTest, ANewerLiveTableReachesTheBackup) {
  setTime(scratch.path("nav/res_css/js/shortQrCode.js"), kNew);
  setTime(scratch.write("stick/shortQrCode.js", "stale"), kOld);
  setTime(scratch.write("nav/user_datas/shortQrCode.js", "left from before"), kNew + 1000);
  compare();
  EXPECT_EQ(rows(), Lines{"1 shortQrCode.js shortQrCode.js"});
  sync.synchronise();
  EXPECT_EQ(scratch.read("stick/shortQrCode.js"), "live");
  EXPECT_EQ(scratch.read("nav/res_css/js/shortQrCode.js"), "live");
}

TEST_F(FolderSyncTest, ATableThatWasSavedSinceTheComparisonStays) {
  setTime(scratch.write("stick/shortQrCode.js", "from the stick"), kNew);
  compare();
  setTime(scratch.write("nav/res_css/js/shortQrCode.js", "saved since"), kNew + 100);
  EXPECT_FALSE(sync.synchronise().shortcutsRestored);
  EXPECT_EQ(scratch.read("nav/res_css/js/shortQrCode.js"), "saved since");
  EXPECT_EQ(progress.lines.back(), toUtf8(kLiveTableChanged));
  EXPECT_FALSE(sync.isFirstComparison());
  compare();
  EXPECT_EQ(rows(), Lines{"1 shortQrCode.js shortQrCode.js"});
}

TEST_F(FolderSyncTest, ATableThatDidNotTravelIsNotReplacedByTheBackupsOlderOne) {
  scratch.makeFolders("nav/user_datas/shortQrCode.js");  // in the way of the copy
  setTime(scratch.write("stick/shortQrCode.js", "older"), kOld - 1000);
  questions.answers = {Answer::Ok};
  compare();
  EXPECT_EQ(questions.boxes, std::vector<Box>{shortcutCopyFailedBox()});
  EXPECT_EQ(rows(), Lines{"2 - shortQrCode.js"});
  std::filesystem::remove(scratch.path("nav/user_datas/shortQrCode.js"));
  const SyncReport report = sync.synchronise();
  EXPECT_EQ(report.copied, 1u);
  EXPECT_FALSE(report.shortcutsRestored);
  EXPECT_EQ(scratch.read("nav/user_datas/shortQrCode.js"), "older");
  EXPECT_EQ(scratch.read("nav/res_css/js/shortQrCode.js"), "live");
  EXPECT_EQ(progress.lines.back(), toUtf8(kLiveTableStayed));
  EXPECT_FALSE(sync.isFirstComparison());
  // The next comparison takes it along, and the backup gets it.
  compare();
  EXPECT_EQ(rows(), Lines{"1 shortQrCode.js shortQrCode.js"});
  sync.synchronise();
  EXPECT_EQ(scratch.read("stick/shortQrCode.js"), "live");
}

TEST_F(FolderSyncTest, AMissingLiveTableIsRestoredFromTheBackup) {
  std::filesystem::remove(scratch.path("nav/res_css/js/shortQrCode.js"));
  setTime(scratch.write("stick/shortQrCode.js", "from the stick"), kNew);
  questions.answers = {Answer::Ok};
  compare();
  EXPECT_TRUE(sync.synchronise().shortcutsRestored);
  EXPECT_EQ(scratch.read("nav/res_css/js/shortQrCode.js"), "from the stick");
}

TEST_F(FolderSyncTest, AMissingTableIsToldAndTheComparisonGoesOn) {
  std::filesystem::remove(scratch.path("nav/res_css/js/shortQrCode.js"));
  scratch.write("stick/a", "");
  questions.answers = {Answer::Ok};
  EXPECT_EQ(compare(), Outcome::Different);
  EXPECT_EQ(questions.boxes, std::vector<Box>{shortcutCopyFailedBox()});
  EXPECT_EQ(rows(), Lines{"2 - a"});
}

TEST_F(FolderSyncTest, AMissingBackupFolderIsToldAndItsSideIsEmpty) {
  questions.answers = {Answer::Ok};
  const Text missing = scratch.text("gone");
  EXPECT_EQ(sync.compare(webRoot, missing, u""), Outcome::Different);
  EXPECT_EQ(questions.boxes, std::vector<Box>{folderMissingBox(missing + nativeSeparator())});
  EXPECT_EQ(rows(), Lines{"0 shortQrCode.js -"});
  EXPECT_EQ(sync.synchronise().copied, 1u);
  EXPECT_EQ(scratch.read("gone/shortQrCode.js"), "live");
}

TEST_F(FolderSyncTest, AFolderOfTheUserThatCannotBeMadeIsToldAndItsSideIsEmpty) {
  std::filesystem::remove_all(scratch.path("nav"));
  scratch.write("nav", "in the way");
  scratch.write("stick/a", "");
  questions.answers = {Answer::Ok, Answer::Ok, Answer::Ok};
  EXPECT_EQ(compare(), Outcome::Different);
  const Text missing = scratch.text("nav/user_datas") + nativeSeparator();
  ASSERT_EQ(questions.boxes.size(), 3u) << "the folder, the table, the folder again";
  EXPECT_EQ(questions.boxes[1], shortcutCopyFailedBox());
  EXPECT_EQ(questions.boxes[2], folderMissingBox(missing));
  EXPECT_EQ(rows(), Lines{"2 - a"});
}

TEST_F(FolderSyncTest, AMissingFolderOfTheUserIsMadeForTheTable) {
  std::filesystem::remove(scratch.path("nav/user_datas"));
  scratch.write("stick/a", "");
  EXPECT_EQ(compare(), Outcome::Different);
  EXPECT_EQ(rows(), (Lines{"0 shortQrCode.js -", "2 - a"}));
}

#ifndef TAVROLLO_WITHOUT_POSIX  // they close files and folders
TEST_F(FolderSyncTest, AnUnreadableLiveTableIsNotReplacedByWhatACrashLeft) {
  setTime(scratch.write("nav/user_datas/shortQrCode.js", "left by a crash", 0666), kOld - 2000);
  setTime(scratch.write("stick/shortQrCode.js", "older"), kOld - 1000);
  ::chmod(scratch.path().c_str(), 0755);
  ::chmod(scratch.path("nav/user_datas").c_str(), 0777);
  ::chmod(scratch.path("nav/res_css/js").c_str(), 0777);
  ::chmod(scratch.path("nav/res_css/js/shortQrCode.js").c_str(), 0);
  EXPECT_EQ(inChildWithoutRights([&] {
              questions.answers = {Answer::Ok};
              compare();
              if (rows() != Lines{"3 shortQrCode.js shortQrCode.js"}) return 1;
              if (sync.synchronise().copied != 1) return 2;
              return progress.lines.back() == toUtf8(kLiveTableStayed) ? 0 : 3;
            }),
            0);
  ::chmod(scratch.path("nav/res_css/js/shortQrCode.js").c_str(), 0644);
  EXPECT_EQ(scratch.read("nav/res_css/js/shortQrCode.js"), "live");
  EXPECT_EQ(scratch.read("nav/user_datas/shortQrCode.js"), "older");
}

TEST_F(FolderSyncTest, ATableThatCannotBeRestoredIsTracedAndItsRowComesAgain) {
  setTime(scratch.write("stick/shortQrCode.js", "from the stick"), kNew);
  ::chmod(scratch.path().c_str(), 0755);
  ::chmod(scratch.path("nav/user_datas").c_str(), 0777);
  ::chmod(scratch.path("nav/res_css/js").c_str(), 0555);
  EXPECT_EQ(inChildWithoutRights([&] {
              const Text travelling = scratch.text("nav/user_datas/shortQrCode.js");
              const Text line = notCopiedLine(travelling, failureFromErrno(EACCES));
              compare();
              const SyncReport report = sync.synchronise();
              if (report.copied != 1 || report.shortcutsRestored) return 1;
              if (progress.lines.back() != toUtf8(line)) return 2;
              compare();
              return rows() == Lines{"3 shortQrCode.js shortQrCode.js"} ? 0 : 3;
            }),
            0);
  ::chmod(scratch.path("nav/res_css/js").c_str(), 0755);
  EXPECT_EQ(scratch.read("nav/res_css/js/shortQrCode.js"), "live");
}

TEST_F(FolderSyncTest, AFolderThatMayNotBeReadIsToldAndNothingIsTakenForMissing) {
  scratch.write("nav/user_datas/a", "precious");
  ::chmod(scratch.path().c_str(), 0755);
  ::chmod(scratch.path("nav/user_datas").c_str(), 0777);
  ::chmod(scratch.path("stick").c_str(), 0);
  EXPECT_EQ(inChildWithoutRights([&] {
              questions.answers = {Answer::Ok};
              if (compare() != Outcome::Unknown) return 1;
              const Box expected = folderMissingBox(scratch.text("stick") + u"/");
              if (questions.boxes != std::vector<Box>{expected}) return 2;
              // "a", the shortcut table, and the folder.
              return rows().empty() && sync.notCompared() == 3 ? 0 : 3;
            }),
            0);
  ::chmod(scratch.path("stick").c_str(), 0755);
}

TEST_F(FolderSyncTest, AFolderThatIsClosedOnBothSidesIsNotIdentical) {
  setTime(scratch.write("stick/shortQrCode.js", "live"), kOld);
  scratch.makeFolders("stick/closed");
  scratch.makeFolders("nav/user_datas/closed");
  ::chmod(scratch.path().c_str(), 0755);
  ::chmod(scratch.path("nav/user_datas").c_str(), 0777);
  ::chmod(scratch.path("stick/closed").c_str(), 0);
  ::chmod(scratch.path("nav/user_datas/closed").c_str(), 0);
  EXPECT_EQ(inChildWithoutRights([&] {
              const bool unknown = compare() == Outcome::Unknown;
              return unknown && sync.notCompared() == 2 ? 0 : 1;
            }),
            0);
  ::chmod(scratch.path("stick/closed").c_str(), 0755);
  ::chmod(scratch.path("nav/user_datas/closed").c_str(), 0755);
}

TEST_F(FolderSyncTest, AClosedFolderInTheBackupMakesNoBox) {
  scratch.makeFolders("stick/closed");
  ::chmod(scratch.path().c_str(), 0755);
  ::chmod(scratch.path("nav/user_datas").c_str(), 0777);
  ::chmod(scratch.path("stick/closed").c_str(), 0);
  EXPECT_EQ(inChildWithoutRights([&] {
              compare();
              return questions.boxes.empty() ? 0 : 1;
            }),
            0);
  ::chmod(scratch.path("stick/closed").c_str(), 0755);
}
#endif

TEST_F(FolderSyncTest, BothSidesMissingAreToldOneAfterTheOther) {
  std::filesystem::remove_all(scratch.path("nav"));
  questions.answers = {Answer::Ok, Answer::Ok, Answer::Ok};
  const Text missing = scratch.text("gone") + nativeSeparator();
  // Making the folder for the table makes the user's folder; only the table itself is missing.
  EXPECT_EQ(sync.compare(webRoot, missing, u""), Outcome::Identical);
  EXPECT_EQ(questions.boxes,
            (std::vector<Box>{shortcutCopyFailedBox(), folderMissingBox(missing)}));
}

TEST_F(FolderSyncTest, WithoutAWebRootNothingIsCopiedMadeOrDeleted) {
  // The folders that a root of "" would mean.
  scratch.write("here/res_css/js/shortQrCode.js", "another's");
  scratch.write("here/user_datas/shortQrCode.js", "another's too");
  scratch.write("stick/a", "");
  const std::filesystem::path before = std::filesystem::current_path();
  for (const char* folder : {"here", "stick"}) {
    std::filesystem::current_path(toPath(scratch.text(folder)));
    questions.answers = {Answer::Ok};
    questions.boxes.clear();
    progress.lines.clear();
    EXPECT_EQ(sync.compare(Text(), scratch.text("stick"), u""), Outcome::Refused);
    EXPECT_EQ(questions.boxes,
              std::vector<Box>{folderMissingBox(Text(u"user_datas") + nativeSeparator())});
    EXPECT_EQ(progress.lines, Lines{slashed(toUtf8(kNoWebRoot))});
    EXPECT_TRUE(rows().empty());
    EXPECT_EQ(sync.synchronise().copied, 0u);
    FolderSync::removeTravellingTable(Text());
  }
  std::filesystem::current_path(before);
  EXPECT_EQ(scratch.namesIn("stick"), Lines{"a"});
  EXPECT_EQ(scratch.read("here/res_css/js/shortQrCode.js"), "another's");
  EXPECT_EQ(scratch.read("here/user_datas/shortQrCode.js"), "another's too");
}

TEST_F(FolderSyncTest, ABackupAroundOrInTheUsersFilesIsRefused) {
  scratch.makeFolders("nav/user_datas/inside");
  scratch.write("stick/a", "");
  compare();
  FolderSync::removeTravellingTable(webRoot);
  for (const char* folder : {"nav", "nav/user_datas", "nav/user_datas/inside"}) {
    questions.answers = {Answer::Ok};
    questions.boxes.clear();
    const Text path = scratch.text(folder);
    EXPECT_EQ(sync.compare(webRoot, path, u""), Outcome::Refused) << folder;
    EXPECT_EQ(questions.boxes, std::vector<Box>{foldersOverlapBox(path + nativeSeparator())});
    EXPECT_TRUE(sync.table().rows.empty());
    EXPECT_TRUE(sync.source().files.empty());
    EXPECT_TRUE(sync.backup().files.empty());
  }
  EXPECT_EQ(scratch.namesIn("nav/user_datas"), Lines{"inside"});
}

TEST_F(FolderSyncTest, ThePatternIsForBothSides) {
  scratch.write("nav/user_datas/sub/a.doc", "");
  scratch.write("stick/b.txt", "");
  scratch.write("stick/c.DOC", "");
  compare(u"*.doc");
  EXPECT_EQ(rows(), (Lines{"0 sub/a.doc -", "2 - c.DOC"}));
}

TEST_F(FolderSyncTest, AStoppedComparisonHasNoRows) {
  scratch.write("stick/a", "");
  progress.stopListing = [](std::size_t call) { return call == 2; };
  EXPECT_EQ(compare(), Outcome::Stopped);
  EXPECT_TRUE(sync.table().rows.empty());
}

TEST_F(FolderSyncTest, EachComparisonStartsAnew) {
  scratch.write("stick/a", "");
  compare();
  std::filesystem::remove(scratch.path("stick/a"));
  compare();
  EXPECT_EQ(rows(), Lines{"0 shortQrCode.js -"});
}

#ifndef TAVROLLO_WITHOUT_POSIX  // they make links
TEST_F(FolderSyncTest, AFileThatCannotBeReadAndHasNoPartnerIsNotIdentical) {
  setTime(scratch.write("stick/shortQrCode.js", "live"), kOld);
  ::symlink("nowhere", scratch.path("nav/user_datas/a").c_str());
  EXPECT_EQ(compare(), Outcome::Unknown);
  EXPECT_EQ(sync.notCompared(), 1u);
  std::filesystem::remove(scratch.path("nav/user_datas/a"));
  EXPECT_EQ(compare(), Outcome::Identical);
  EXPECT_EQ(sync.notCompared(), 0u);
}

TEST_F(FolderSyncTest, ALinkToAFolderWithNothingToPutBehindItIsIdentical) {
  setTime(scratch.write("stick/shortQrCode.js", "live"), kOld);
  ::symlink(".", scratch.path("nav/user_datas/loop").c_str());
  EXPECT_EQ(compare(), Outcome::Identical);
  EXPECT_EQ(sync.notCompared(), 0u);
}

TEST_F(FolderSyncTest, FilesAboutWhichTheOtherSideCouldNotBeAskedAreCounted) {
  scratch.write("nav/user_datas/d/a", "");
  ::symlink("nowhere", scratch.path("stick/d").c_str());
  compare();
  EXPECT_EQ(rows(), Lines{"0 shortQrCode.js -"});
  EXPECT_EQ(sync.table().withheld, 1u);
  EXPECT_EQ(progress.lines.back(), "Synchronisation - l'autre côté n'est pas connu : 1 fichier");
}
#endif

TEST_F(FolderSyncTest, LeftoversGoWhenTheFoldersAreCompared) {
  scratch.write("stick/.tavrollo-copie-999999999-1-0.tmp", "half");
  scratch.write("nav/user_datas/d/.tavrollo-copie-999999999-1-0.tmp", "half");
  compare();
  EXPECT_TRUE(scratch.namesIn("stick").empty());
  EXPECT_TRUE(scratch.namesIn("nav/user_datas/d").empty());
}

TEST_F(FolderSyncTest, LeavingTakesTheTravellingTableAwayAndKeepsTheLiveOne) {
  compare();
  FolderSync::removeTravellingTable(webRoot);
  EXPECT_TRUE(scratch.namesIn("nav/user_datas").empty());
  EXPECT_EQ(scratch.read("nav/res_css/js/shortQrCode.js"), "live");
  FolderSync::removeTravellingTable(webRoot);
}

TEST_F(FolderSyncTest, LeavingKeepsTheTravellingTableWhileTheLiveOneIsMissing) {
  scratch.write("nav/user_datas/shortQrCode.js", "the last");
  std::filesystem::remove(scratch.path("nav/res_css/js/shortQrCode.js"));
  FolderSync::removeTravellingTable(webRoot);
  EXPECT_EQ(scratch.read("nav/user_datas/shortQrCode.js"), "the last");

  scratch.makeFolders("nav/res_css/js/shortQrCode.js");
  FolderSync::removeTravellingTable(webRoot);
  EXPECT_EQ(scratch.read("nav/user_datas/shortQrCode.js"), "the last") << "a folder is no table";
  std::filesystem::remove(scratch.path("nav/res_css/js/shortQrCode.js"));

  questions.answers = {Answer::Ok};
  compare();
  EXPECT_TRUE(sync.synchronise().shortcutsRestored);
  EXPECT_EQ(scratch.read("nav/res_css/js/shortQrCode.js"), "the last");
  FolderSync::removeTravellingTable(webRoot);
  EXPECT_TRUE(scratch.namesIn("nav/user_datas").empty());
}

#ifndef TAVROLLO_WITHOUT_POSIX  // it closes a folder
TEST_F(FolderSyncTest, LeavingKeepsTheTravellingTableWhileNobodyKnowsOfTheLiveOne) {
  scratch.write("nav/user_datas/shortQrCode.js", "perhaps the last");
  ::chmod(scratch.path().c_str(), 0755);
  ::chmod(scratch.path("nav/user_datas").c_str(), 0777);
  ::chmod(scratch.path("nav/res_css/js").c_str(), 0);
  EXPECT_EQ(inChildWithoutRights([&] {
              FolderSync::removeTravellingTable(webRoot);
              return 0;
            }),
            0);
  ::chmod(scratch.path("nav/res_css/js").c_str(), 0755);
  EXPECT_EQ(scratch.read("nav/user_datas/shortQrCode.js"), "perhaps the last");
}
#endif

}  // namespace
