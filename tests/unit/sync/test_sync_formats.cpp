// SPDX-License-Identifier: GPL-3.0-or-later
// Copies on disks of other formats: sticks as they are sold, and file systems that clone.
#include <cstdlib>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <linux/fiemap.h>
#include <linux/fs.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include "SyncSupport.h"
#include "platform/linux/FileDescriptor.h"
#include "support/Doubles.h"
#include "support/Mounted.h"
#include "support/Processes.h"
#include "sync/Execution.h"

namespace {

using Lines = std::vector<std::string>;

constexpr const char* kNoDriver = "no way to mount a disk of this format here";

// A small disk of its own format, mounted on a folder. Its driver is in the kernel or beside it.
class Disk {
 public:
  Disk(std::string image, std::string folder, std::uintmax_t size)
      : image_(std::move(image)), folder_(std::move(folder)) {
    std::ofstream(image_).close();
    std::filesystem::resize_file(image_, size);
  }
  ~Disk() {
    if (mounted_) run("umount '" + folder_ + "'");
    if (!device_.empty()) run("losetup -d " + device_);
    std::filesystem::remove(image_);
  }
  Disk(const Disk&) = delete;
  Disk& operator=(const Disk&) = delete;

  // False where there is no way to: an ordinary user has no device to mount.
  bool mount(const std::string& format) {
    if (::geteuid() != 0 || !mountPrivately()) return false;
    if (!run("mkfs." + format + " '" + image_ + "'")) return false;
    std::ofstream(image_ + ".txt").close();
    const std::string ask = "losetup -f --show '" + image_ + "' >'" + image_ + ".txt'";
    const bool asked = std::system((kPath + ask + " 2>/dev/null").c_str()) == 0;
    std::getline(std::ifstream(image_ + ".txt"), device_);
    std::filesystem::remove(image_ + ".txt");
    return asked && mountDevice(format);
  }

  // As when it was pulled and put in again: nothing of it is in memory.
  bool mountAgain(const std::string& format) {
    return run("umount '" + folder_ + "'") && mountDevice(format);
  }

 private:
  bool mountDevice(const std::string& format) {
    const std::string there = " " + device_ + " '" + folder_ + "'";
    mounted_ = run("mount -t " + format + there) || run("mount." + format + "-fuse" + there);
    return mounted_;
  }
  static bool run(const std::string& command) {
    return std::system((kPath + command + " >/dev/null 2>&1").c_str()) == 0;
  }

  inline static const std::string kPath = "PATH=$PATH:/usr/sbin:/sbin; ";
  std::string image_;
  std::string folder_;
  std::string device_;
  bool mounted_ = false;
};

// Two folders that may both be on one disk.
class SyncFormats : public ::testing::TestWithParam<const char*> {
 protected:
  bool mount(std::uintmax_t megabytes) {
    disk = std::make_unique<Disk>(backup.path() + ".img", backup.path(), megabytes * 1024 * 1024);
    return disk->mount(GetParam());
  }
  void list(const Text& sourceFolder, const Text& backupFolder) {
    ours = listFolder(sourceFolder + u"/", u"", Side::Source, progress);
    theirs = listFolder(backupFolder + u"/", u"", Side::Backup, progress);
  }
  SyncReport execute() {
    return executeRows(ours, theirs, compareListings(ours, theirs).rows, questions, progress);
  }
  SyncReport synchronise(const Text& sourceFolder, const Text& backupFolder) {
    list(sourceFolder, backupFolder);
    return execute();
  }
  SyncReport synchronise() { return synchronise(source.text(), backup.text()); }

  Scratch source;
  Scratch backup;
  std::unique_ptr<Disk> disk;  // on `backup`
  Listing ours;
  Listing theirs;
  RecordingProgress progress;
  Journal journal;
  ScriptedQuestions questions{journal};
};

std::string nameOfFormat(const ::testing::TestParamInfo<const char*>& format) {
  return format.param;
}

// --- Sticks -------------------------------------------------------------------------------------

class SyncSticks : public SyncFormats {
 protected:
  bool mount() { return SyncFormats::mount(16); }
};

TEST_P(SyncSticks, CopiesAreTheSameAfterwardsAndCapitalsAreNoNewFile) {
  if (!mount()) GTEST_SKIP() << kNoDriver;
  setTime(source.write("Dossier/été.txt", "1", 0640), kOld + 1);
  setTime(source.write("a", "2"), kNew + 1);
  EXPECT_EQ(synchronise().copied, 2u);
  EXPECT_EQ(differencesOf(source, backup), Lines{});

  source.write("A", "the stick takes it for a");
  const SyncReport second = synchronise();
  EXPECT_EQ(second.copied, 0u);
  EXPECT_EQ(second.notCopied.size(), 1u);
  EXPECT_EQ(backup.read("a"), "2");
  std::filesystem::remove(source.path("A"));

  setTime(source.write("a", "newer"), kNew + 101);
  setTime(backup.write("DOSSIER/von dort", "3"), kNew);
  EXPECT_EQ(synchronise().copied, 2u);
  EXPECT_EQ(backup.read("a"), "newer");
  EXPECT_EQ(differencesOf(source, backup), Lines{});
}

TEST_P(SyncSticks, PermissionsThatTheSystemMakesUpAreNotCarriedOver) {
  if (!mount()) GTEST_SKIP() << kNoDriver;
  setTime(backup.write("new", "1"), kNew);
  setTime(backup.write("old", "2"), kNew);
  setTime(source.write("old", "0", 0600), kOld);
  ::umask(022);
  EXPECT_EQ(synchronise().copied, 2u);
  const auto modeOf = [](const std::string& path) {
    struct stat status {};
    return ::stat(path.c_str(), &status) == 0 ? status.st_mode & 0777 : 0;
  };
  EXPECT_EQ(modeOf(source.path("new")), 0644u);
  EXPECT_EQ(modeOf(source.path("old")), 0600u) << "as the replaced file";
}

TEST_P(SyncSticks, ATimeThatTheStickRoundsIsNoChange) {
  if (!mount()) GTEST_SKIP() << kNoDriver;
  for (int second = 0; second < 4; ++second) {
    const std::string name = "a" + std::to_string(second);
    setTime(backup.write(name, "old"), kOld + second);
    setTime(source.write(name, "new"), kNew + second);
    setTime(backup.write("b" + name, "new"), kNew + second);
    setTime(source.write("b" + name, "old"), kOld + second);
  }
  list(source.text(), backup.text());
  ASSERT_TRUE(disk->mountAgain(GetParam()));
  EXPECT_EQ(execute().copied, 8u) << "what was compared from memory is what the stick has";
  ASSERT_TRUE(disk->mountAgain(GetParam()));
  EXPECT_EQ(differencesOf(source, backup), Lines{});
}

TEST_P(SyncSticks, NamesThatTheStickDoesNotTakeAreCountedAndTheRestGoesOn) {
  if (!mount()) GTEST_SKIP() << kNoDriver;
  source.write("a?", "1");
  source.write("d:/b", "2");
  source.write("d:/c", "3");
  source.write("e", "4");
  questions.answers = {Answer::Ok};
  const SyncReport report = synchronise();
  EXPECT_EQ(report.copied, 1u);
  EXPECT_EQ(report.notCopied.size(), 3u);
  EXPECT_EQ(questions.boxes.size(), 1u) << "one box for a folder";
  EXPECT_EQ(backup.entries(), 1u);
  EXPECT_EQ(differencesOf(source, backup), (Lines{"0 a? -", "0 d:/b -", "0 d:/c -"}));
}

TEST_P(SyncSticks, NamesThatTheStickWouldCutAreCountedAndTheRestGoesOn) {
  if (!mount()) GTEST_SKIP() << kNoDriver;
  source.write("a.", "1");
  source.write("d./b", "2");
  source.write("d/b", "3");
  source.write("e.f", "4");
  source.write("f../x/b", "5");
  questions.answers = {Answer::Ok};
  const SyncReport report = synchronise();
  EXPECT_EQ(report.copied, 2u);
  EXPECT_EQ(report.notCopied.size(), 3u);
  for (const NotCopied& failed : report.notCopied) EXPECT_EQ(failed.failure.number, 75);
  EXPECT_EQ(backup.read("d/b"), "3");
  EXPECT_EQ(backup.read("e.f"), "4");
  EXPECT_EQ(backup.entries(), 2u);
  EXPECT_EQ(differencesOf(source, backup), (Lines{"0 a. -", "0 d./b -", "0 f../x/b -"}));
}

// The system numbers a stick's files anew when they have fallen out of memory.
TEST_P(SyncSticks, AFileOfTheStickThatHasAnotherNumberIsTheSame) {
  if (!mount()) GTEST_SKIP() << kNoDriver;
  setTime(backup.write("a", "same"), kNew);
  setTime(backup.write("b", "same"), kNew);
  list(source.text(), backup.text());
  progress.whileCopying = [this](std::size_t row, std::uint64_t bytes) {
    if (row == 1 && bytes == 0) std::filesystem::rename(backup.path("b"), backup.path("a"));
  };
  const SyncReport report = execute();
  EXPECT_EQ(report.copied, 1u);
  EXPECT_EQ(source.read("a"), "same");
}

INSTANTIATE_TEST_SUITE_P(Formats, SyncSticks, ::testing::Values("vfat", "exfat"), nameOfFormat);

// --- Clones -------------------------------------------------------------------------------------

class SyncClones : public SyncFormats {
 protected:
  bool mount() { return SyncFormats::mount(320); }  // none of these formats is for smaller disks
};

// Whether all blocks of the file belong to another one too.
bool sharesItsBlocks(const std::string& path) {
  const FileDescriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC));
  constexpr std::uint32_t kMost = 64;
  std::vector<std::uint64_t> room((sizeof(fiemap) + kMost * sizeof(fiemap_extent)) / 8 + 1);
  auto* map = reinterpret_cast<fiemap*>(room.data());
  map->fm_length = FIEMAP_MAX_OFFSET;
  map->fm_flags = FIEMAP_FLAG_SYNC;
  map->fm_extent_count = kMost;
  if (::ioctl(file.number(), FS_IOC_FIEMAP, map) != 0 || map->fm_mapped_extents == 0) return false;
  return std::all_of(
      map->fm_extents, map->fm_extents + map->fm_mapped_extents,
      [](const fiemap_extent& extent) { return (extent.fe_flags & FIEMAP_EXTENT_SHARED) != 0; });
}

std::string someBytes() {
  std::string bytes(3'000'001, ' ');
  for (std::size_t i = 0; i < bytes.size(); ++i) bytes[i] = static_cast<char>(i * 7 + i / 251);
  return bytes;
}

TEST_P(SyncClones, ACopyOnTheSameDiskSharesItsBlocks) {
  if (!mount()) GTEST_SKIP() << kNoDriver;
  const std::string bytes = someBytes();
  setTime(backup.write("ours/a", bytes, 0640), kNew);
  setTime(backup.write("ours/d/empty", ""), kNew);
  setTime(backup.write("ours/b", bytes + "b"), kNew);
  setTime(backup.write("theirs/b", "old"), kOld);
  const Text here = backup.text("ours");
  const Text there = backup.text("theirs");
  EXPECT_FALSE(sharesItsBlocks(backup.path("ours/a")));
  EXPECT_EQ(synchronise(here, there).copied, 3u);
  for (const char* name : {"a", "b"}) {
    EXPECT_TRUE(sharesItsBlocks(backup.path(std::string("theirs/") + name))) << name;
    EXPECT_EQ(timeOf(backup.path(std::string("theirs/") + name)), kNew) << name;
  }
  EXPECT_EQ(backup.read("theirs/d/empty"), "");
  EXPECT_EQ(synchronise(here, there).copied, 0u);

  setTime(backup.write("ours/a", "written since"), kNew + 100);
  EXPECT_TRUE(backup.read("theirs/a") == bytes) << "a copy of its own all the same";
}

TEST_P(SyncClones, ACopyToAnotherDiskIsWritten) {
  if (!mount()) GTEST_SKIP() << kNoDriver;
  const std::string bytes = someBytes();
  setTime(source.write("a", bytes), kNew);
  setTime(backup.write("b", bytes), kNew);
  EXPECT_EQ(synchronise().copied, 2u);
  EXPECT_FALSE(sharesItsBlocks(backup.path("a")));
  EXPECT_TRUE(backup.read("a") == bytes);
  EXPECT_TRUE(source.read("b") == bytes);
  EXPECT_EQ(differencesOf(source, backup), Lines{});
}

INSTANTIATE_TEST_SUITE_P(Formats, SyncClones, ::testing::Values("btrfs", "xfs"), nameOfFormat);

}  // namespace
