// SPDX-License-Identifier: GPL-3.0-or-later
// What becomes of both folders when the disk that is copied to fills up or goes away.
#include <gtest/gtest.h>

#include "SyncSupport.h"
#include "support/Doubles.h"
#include "support/Mounted.h"
#include "support/Processes.h"
#include "sync/Execution.h"

namespace {

using Lines = std::vector<std::string>;

class SyncFaults : public ::testing::Test {
 protected:
  void list() {
    ours = listFolder(source.text() + u"/", u"", Side::Source, progress);
    theirs = listFolder(backup.text() + u"/", u"", Side::Backup, progress);
    rows = compareListings(ours, theirs).rows;
  }
  SyncReport execute() { return executeRows(ours, theirs, rows, questions, progress); }

  Scratch source;
  Scratch backup;
  Listing ours;
  Listing theirs;
  std::vector<DifferenceRow> rows;
  RecordingProgress progress;
  Journal journal;
  ScriptedQuestions questions{journal};
};

const std::string kLarge(100 * 1024, 'n');
const std::string kStale(100 * 1024, 'o');

TEST_F(SyncFaults, ADiskThatFillsTakesWhatItHoldsAndTheRestIsCounted) {
  const Mounted disk(backup.path(), "size=360k");
  if (!disk) GTEST_SKIP() << kMayNotMount;
  setTime(backup.write("a", "old"), kOld);
  for (const char* name : {"a", "b", "c", "d", "e"}) setTime(source.write(name, kLarge), kNew);
  source.write("small", "fits");
  list();
  const SyncReport report = execute();
  EXPECT_EQ(report.copied, 4u);
  ASSERT_EQ(report.notCopied.size(), 2u);
  for (const NotCopied& failed : report.notCopied) {
    EXPECT_EQ(failed.failure, (Failure{61, u"Disque plein"})) << failed.row;
  }
  EXPECT_EQ(progress.lines.back(), "Synchronisation : 4 fichiers copiés, 2 non copiés");
  for (const char* name : {"a", "b", "c"}) EXPECT_TRUE(backup.read(name) == kLarge) << name;
  EXPECT_EQ(backup.read("small"), "fits");
  EXPECT_EQ(backup.entries(), 4u);
  EXPECT_EQ(differencesOf(source, backup), (Lines{"0 d -", "0 e -"}));
}

TEST_F(SyncFaults, OldFilesMakeRoomBeforeADiskCountsAsFull) {
  const Mounted disk(backup.path(), "size=360k");
  if (!disk) GTEST_SKIP() << kMayNotMount;
  for (const char* name : {"a", "b"}) {
    setTime(backup.write(name, kStale), kOld);
    setTime(source.write(name, kLarge), kNew);
  }
  list();
  EXPECT_EQ(execute().copied, 2u);
  EXPECT_EQ(differencesOf(source, backup), Lines{});
}

TEST_F(SyncFaults, AFullDiskKeepsItsOldFiles) {
  const Mounted disk(backup.path(), "size=64k");
  if (!disk) GTEST_SKIP() << kMayNotMount;
  setTime(backup.write("a", "old"), kOld);
  setTime(source.write("a", kLarge), kNew);
  list();
  EXPECT_EQ(execute().copied, 0u);
  EXPECT_EQ(backup.read("a"), "old");
  EXPECT_EQ(backup.entries(), 1u);
}

TEST_F(SyncFaults, AStickThatIsPulledBeforeTheCopyGetsNothingWrittenInItsPlace) {
  source.write("a", "1");
  backup.makeFolders("stick");
  {
    const Mounted disk(backup.path("stick"), "size=64k");
    if (!disk) GTEST_SKIP() << kMayNotMount;
    setTime(backup.write("stick/files/a", "old"), kOld);
    ours = listFolder(source.text() + u"/", u"", Side::Source, progress);
    theirs = listFolder(backup.text("stick/files") + u"/", u"", Side::Backup, progress);
    rows = compareListings(ours, theirs).rows;
    ASSERT_EQ(rows.size(), 1u);
  }
  const SyncReport report = execute();
  EXPECT_EQ(report.copied, 0u);
  EXPECT_EQ(report.notCopied.size(), 1u);
  EXPECT_TRUE(backup.namesIn("stick").empty());
}

TEST_F(SyncFaults, WhatAPulledStickWasMountedOnGetsNothingEither) {
  source.write("a", "1");
  {
    const Mounted disk(backup.path(), "size=64k");
    if (!disk) GTEST_SKIP() << kMayNotMount;
    list();
    ASSERT_EQ(rows.size(), 1u);
  }
  const SyncReport report = execute();
  ASSERT_EQ(report.notCopied.size(), 1u);
  EXPECT_EQ(report.notCopied[0].failure, failures::changedSinceCompared());
  EXPECT_EQ(backup.entries(), 0u);
  EXPECT_TRUE(questions.boxes.empty());
}

TEST_F(SyncFaults, AStickOfSixteenMegabytesThatFillsUpKeepsEveryFileWhole) {
  const Mounted disk(backup.path(), "size=16m");
  if (!disk) GTEST_SKIP() << kMayNotMount;
  const std::string fresh(300'000, 'n');
  const std::string stale(300'000, 'o');
  for (int i = 0; i < 80; ++i) {
    const std::string name = "d" + std::to_string(i % 4) + "/" + std::to_string(i);
    setTime(source.write(name, fresh), kNew);
    if (i % 4 == 0) setTime(backup.write(name, stale), kOld);
  }
  list();
  const SyncReport report = execute();
  EXPECT_GT(report.copied, 40u);
  EXPECT_EQ(report.copied + report.notCopied.size(), 80u);
  const Listing after = listed(backup);
  EXPECT_TRUE(after.leftovers.empty());
  for (std::size_t i = 0; i < after.files.size(); ++i) {
    std::string content(fresh.size() + 1, '\0');
    std::ifstream file(backup.path(after.path(i)), std::ios::binary);
    file.read(content.data(), static_cast<std::streamsize>(content.size()));
    content.resize(static_cast<std::size_t>(file.gcount()));
    EXPECT_TRUE(content == fresh || content == stale) << after.path(i);
  }
  EXPECT_EQ(differencesOf(source, backup).size(), report.notCopied.size());
}

TEST_F(SyncFaults, ADiskThatBecomesReadOnlyMeanwhileKeepsItsFiles) {
  const Mounted disk(backup.path(), "size=1m");
  if (!disk) GTEST_SKIP() << kMayNotMount;
  setTime(backup.write("a", "old"), kOld);
  setTime(source.write("a", "new"), kNew);
  list();
  ASSERT_TRUE(disk.makeReadOnly());
  const SyncReport report = execute();
  ASSERT_EQ(report.notCopied.size(), 1u);
  EXPECT_EQ(report.notCopied[0].failure.number, 70);
  EXPECT_EQ(backup.read("a"), "old");
}

}  // namespace
