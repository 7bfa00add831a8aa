// SPDX-License-Identifier: GPL-3.0-or-later
// What becomes of both folders when the disk that is copied to fills up or goes away.
#include <cstdlib>
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
  if (!disk) GTEST_SKIP() << "only the administrator may mount";
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
  if (!disk) GTEST_SKIP() << "only the administrator may mount";
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
  if (!disk) GTEST_SKIP() << "only the administrator may mount";
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
    if (!disk) GTEST_SKIP() << "only the administrator may mount";
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
    if (!disk) GTEST_SKIP() << "only the administrator may mount";
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
  if (!disk) GTEST_SKIP() << "only the administrator may mount";
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
  if (!disk) GTEST_SKIP() << "only the administrator may mount";
  setTime(backup.write("a", "old"), kOld);
  setTime(source.write("a", "new"), kNew);
  list();
  ASSERT_EQ(::mount("none", backup.path().c_str(), nullptr, MS_REMOUNT | MS_RDONLY, nullptr), 0);
  const SyncReport report = execute();
  ASSERT_EQ(report.notCopied.size(), 1u);
  EXPECT_EQ(report.notCopied[0].failure.number, 70);
  EXPECT_EQ(backup.read("a"), "old");
}

// A small stick of its own format, mounted on a folder. Its driver is in the kernel or beside it.
class Stick {
 public:
  Stick(std::string image, std::string folder)
      : image_(std::move(image)), folder_(std::move(folder)) {
    std::ofstream(image_).close();
    std::filesystem::resize_file(image_, 16 * 1024 * 1024);
  }
  ~Stick() {
    if (mounted_) run("umount '" + folder_ + "'");
    if (!device_.empty()) run("losetup -d " + device_);
    std::filesystem::remove(image_);
  }
  Stick(const Stick&) = delete;
  Stick& operator=(const Stick&) = delete;

  // False where there is no way to.
  bool mount(const std::string& format) {
    if (!mountPrivately() || !run("mkfs." + format + " '" + image_ + "'")) return false;
    std::ofstream(image_ + ".txt").close();
    const std::string ask = "losetup -f --show '" + image_ + "' >'" + image_ + ".txt'";
    const bool asked = std::system((kPath + ask + " 2>/dev/null").c_str()) == 0;
    std::getline(std::ifstream(image_ + ".txt"), device_);
    std::filesystem::remove(image_ + ".txt");
    mounted_ = asked && (run("mount -t " + format + " " + device_ + " '" + folder_ + "'") ||
                         run("mount." + format + "-fuse " + device_ + " '" + folder_ + "'"));
    return mounted_;
  }

 private:
  static bool run(const std::string& command) {
    return std::system((kPath + command + " >/dev/null 2>&1").c_str()) == 0;
  }

  inline static const std::string kPath = "PATH=$PATH:/usr/sbin:/sbin; ";
  std::string image_;
  std::string folder_;
  std::string device_;
  bool mounted_ = false;
};

class SyncSticks : public SyncFaults, public ::testing::WithParamInterface<const char*> {};

TEST_P(SyncSticks, CopiesAreTheSameAfterwardsAndCapitalsAreNoNewFile) {
  Stick stick(source.path() + ".img", backup.path());
  if (!stick.mount(GetParam())) GTEST_SKIP() << "no way to mount a stick of this format here";
  setTime(source.write("Dossier/été.txt", "1", 0640), kOld + 1);
  setTime(source.write("a", "2"), kNew + 1);
  list();
  EXPECT_EQ(execute().copied, 2u);
  EXPECT_EQ(differencesOf(source, backup), Lines{});

  source.write("A", "the stick takes it for a");
  list();
  const SyncReport second = execute();
  EXPECT_EQ(second.copied, 0u);
  EXPECT_EQ(second.notCopied.size(), 1u);
  EXPECT_EQ(backup.read("a"), "2");
  std::filesystem::remove(source.path("A"));

  setTime(source.write("a", "newer"), kNew + 101);
  setTime(backup.write("DOSSIER/von dort", "3"), kNew);
  list();
  EXPECT_EQ(execute().copied, 2u);
  EXPECT_EQ(backup.read("a"), "newer");
  EXPECT_EQ(differencesOf(source, backup), Lines{});
}

TEST_P(SyncSticks, PermissionsThatTheSystemMakesUpAreNotCarriedOver) {
  Stick stick(source.path() + ".img", backup.path());
  if (!stick.mount(GetParam())) GTEST_SKIP() << "no way to mount a stick of this format here";
  setTime(backup.write("new", "1"), kNew);
  setTime(backup.write("old", "2"), kNew);
  setTime(source.write("old", "0", 0600), kOld);
  list();
  ::umask(022);
  EXPECT_EQ(execute().copied, 2u);
  const auto modeOf = [](const std::string& path) {
    struct stat status {};
    return ::stat(path.c_str(), &status) == 0 ? status.st_mode & 0777 : 0;
  };
  EXPECT_EQ(modeOf(source.path("new")), 0644u);
  EXPECT_EQ(modeOf(source.path("old")), 0600u) << "as the replaced file";
}

INSTANTIATE_TEST_SUITE_P(Formats, SyncSticks, ::testing::Values("vfat", "exfat"),
                         [](const auto& format) { return std::string(format.param); });

}  // namespace
