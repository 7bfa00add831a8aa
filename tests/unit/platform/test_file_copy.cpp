// SPDX-License-Identifier: GPL-3.0-or-later
#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/resource.h>

#include "platform/FileCopy.h"
#include "support/Mounted.h"
#include "support/Processes.h"

namespace {

constexpr std::int64_t kOld = 1'000'000'000;
constexpr std::int64_t kNew = 1'400'000'001;

bool goOn(std::uint64_t) { return true; }
void wait() {}

void setTime(const std::string& path, std::int64_t seconds, long nanoseconds = 0) {
  const timespec times[2] = {{.tv_sec = kOld, .tv_nsec = 0},
                             {.tv_sec = seconds, .tv_nsec = nanoseconds}};
  ASSERT_EQ(::utimensat(AT_FDCWD, path.c_str(), times, 0), 0);
}

struct stat statusOf(const std::string& path) {
  struct stat status {};
  ::stat(path.c_str(), &status);
  return status;
}

FileState stateOf(const std::string& path) {
  const struct stat status = statusOf(path);
  return {.modified = status.st_mtim.tv_sec, .size = static_cast<std::uint64_t>(status.st_size)};
}

class FileCopyTest : public ::testing::Test {
 protected:
  void SetUp() override { open(source.text(), target.text()); }

  void open(const Text& from, const Text& to) {
    ASSERT_FALSE(fromTree.open(from));
    ASSERT_FALSE(toTree.open(to));
  }

  // The job as a comparison of the two folders would give it.
  FileCopyJob job(const std::string& from, const std::string& to) const {
    FileCopyJob made{
        .from = from, .to = to, .fromState = stateOf(source.path(from)), .toState = {}};
    if (std::filesystem::exists(target.path(to))) made.toState = stateOf(target.path(to));
    return made;
  }

  // Copies one file in a batch of its own.
  Failure copy(const FileCopyJob& asked) {
    FileCopyBatch batch(fromTree, toTree);
    bool stopped = false;
    if (Failure failure = batch.add(asked, 7, goOn, stopped)) return failure;
    const std::vector<FileCopyResult> results = batch.commit(wait);
    EXPECT_EQ(results.size(), 1u);
    EXPECT_EQ(results[0].ticket, 7u);
    return results[0].failure;
  }
  Failure copy(const std::string& name) { return copy(job(name, name)); }

  Scratch source;
  Scratch target;
  FolderTree fromTree;
  FolderTree toTree;
};

TEST_F(FileCopyTest, ANewFileHasBytesTimeAndPermissionsOfTheSource) {
  const std::string path = source.write("a", "content", 0640);
  setTime(path, kNew, 123456789);
  EXPECT_FALSE(copy("a"));
  EXPECT_EQ(target.read("a"), "content");
  const struct stat copied = statusOf(target.path("a"));
  EXPECT_EQ(copied.st_mtim.tv_sec, kNew);
  EXPECT_EQ(copied.st_mtim.tv_nsec, 123456789);
  EXPECT_EQ(copied.st_mode & 07777, 0640u);
  EXPECT_EQ(target.entries(), 1u);
}

TEST_F(FileCopyTest, AnOldFileIsReplacedAlsoWhenItIsWriteProtected) {
  source.write("a", "new");
  setTime(target.write("a", "old", 0444), kOld);
  EXPECT_FALSE(copy("a"));
  EXPECT_EQ(target.read("a"), "new");
  EXPECT_EQ(target.entries(), 1u);
}

TEST_F(FileCopyTest, WhoeverReadsTheOldFileGoesOnReadingIt) {
  source.write("a", "new");
  setTime(target.write("a", "old"), kOld);
  std::ifstream reader(target.path("a"));
  EXPECT_FALSE(copy("a"));
  EXPECT_EQ(std::string(std::istreambuf_iterator<char>(reader), {}), "old");
}

TEST_F(FileCopyTest, EmptyAndLargeFilesArriveWhole) {
  source.write("empty", "");
  std::string large(9'000'001, 'x');
  for (std::size_t i = 0; i < large.size(); i += 4096) large[i] = static_cast<char>(i / 4096);
  source.write("large", large);
  EXPECT_FALSE(copy("empty"));
  EXPECT_FALSE(copy("large"));
  EXPECT_EQ(target.read("empty"), "");
  EXPECT_TRUE(target.read("large") == large);
}

TEST_F(FileCopyTest, NamesOfAnyBytesAndPathsOfAnyLengthAreCopied) {
  const std::string names[] = {"caf\xE9", "two\nlines", "back\\slash", std::string(255, 'n')};
  for (const std::string& name : names) {
    source.write(name, name);
    EXPECT_FALSE(copy(name)) << name;
    EXPECT_EQ(target.read(name), name);
  }
  std::string folder;
  for (int i = 0; i < 20; ++i) folder += std::string(250, 'd') + "/";
  ASSERT_FALSE(fromTree.makeFolder(folder.substr(0, folder.size() - 1)));
  ASSERT_FALSE(toTree.makeFolder(folder.substr(0, folder.size() - 1)));
  EXPECT_FALSE(copy({.from = names[3], .to = folder + "deep", .fromState = {}, .toState = {}}));
  FolderTree& back = toTree;
  FileCopyBatch batch(back, fromTree);
  bool stopped = false;
  ASSERT_FALSE(batch.add({.from = folder + "deep", .to = "again", .fromState = {}, .toState = {}},
                         0, goOn, stopped));
  ASSERT_FALSE(batch.commit(wait)[0].failure);
  EXPECT_EQ(source.read("again"), names[3]);
}

TEST_F(FileCopyTest, BeforeTheCommitTheTargetIsUntouchedAndAHiddenFileStandsBesideIt) {
  source.write("a", "new");
  setTime(target.write("a", "old"), kOld);
  {
    FileCopyBatch batch(fromTree, toTree);
    bool stopped = false;
    EXPECT_TRUE(batch.empty());
    ASSERT_FALSE(batch.add(job("a", "a"), 0, goOn, stopped));
    EXPECT_FALSE(batch.empty());
    EXPECT_EQ(target.read("a"), "old");
    EXPECT_EQ(target.entries(), 2u);
    for (const std::string& name : target.namesIn()) {
      EXPECT_TRUE(name == "a" || (name.starts_with('.') && isCopyLeftover(name))) << name;
    }
  }
  EXPECT_EQ(target.namesIn(), std::vector<std::string>{"a"});
  EXPECT_EQ(target.read("a"), "old");
}

TEST_F(FileCopyTest, ABatchGivesOneResultForEachFile) {
  FileCopyBatch batch(fromTree, toTree);
  bool stopped = false;
  for (int i = 0; i < 20; ++i) {
    const std::string name = "file" + std::to_string(i);
    source.write(name, name);
    ASSERT_FALSE(batch.add(job(name, name), static_cast<std::size_t>(i), goOn, stopped));
  }
  target.write("file3", "came meanwhile");
  const std::vector<FileCopyResult> results = batch.commit(wait);
  ASSERT_EQ(results.size(), 20u);
  for (const FileCopyResult& result : results) {
    EXPECT_EQ(result.failure.number, result.ticket == 3 ? 58 : 0) << result.ticket;
  }
  EXPECT_EQ(target.read("file3"), "came meanwhile");
  EXPECT_EQ(target.read("file19"), "file19");
  EXPECT_EQ(target.entries(), 20u);
  EXPECT_TRUE(batch.empty());
  EXPECT_TRUE(batch.commit(wait).empty());
}

TEST_F(FileCopyTest, ABatchIsFullAfterManyFilesBytesOrFolders) {
  FileCopyBatch files(fromTree, toTree);
  bool stopped = false;
  for (int i = 0; i < 500; ++i) {
    EXPECT_FALSE(files.full()) << i;
    const std::string name = std::to_string(i);
    source.write(name, "");
    ASSERT_FALSE(files.add(job(name, name), 0, goOn, stopped));
  }
  EXPECT_TRUE(files.full());
  files.commit(wait);
  EXPECT_FALSE(files.full());

  FileCopyBatch bytes(fromTree, toTree);
  source.write("large", "");
  std::filesystem::resize_file(source.path("large"), 64 * 1024 * 1024);
  ASSERT_FALSE(bytes.add(job("large", "large"), 0, goOn, stopped));
  EXPECT_TRUE(bytes.full());
  bytes.commit(wait);
  EXPECT_FALSE(bytes.full());

  FileCopyBatch folders(fromTree, toTree);
  for (int i = 0; i < 100; ++i) {
    EXPECT_FALSE(folders.full()) << i;
    const std::string folder = "d" + std::to_string(i);
    source.write(folder + "/a", "");
    target.makeFolders(folder);
    ASSERT_FALSE(folders.add(job(folder + "/a", folder + "/a"), 0, goOn, stopped));
  }
  EXPECT_TRUE(folders.full());
  folders.commit(wait);
  EXPECT_FALSE(folders.full());
}

TEST_F(FileCopyTest, WhoWaitsForTheDiskIsToldBeforeAndAfterTheRenaming) {
  source.write("a", "");
  FileCopyBatch batch(fromTree, toTree);
  bool stopped = false;
  ASSERT_FALSE(batch.add(job("a", "a"), 0, goOn, stopped));
  std::vector<std::string> seen;
  batch.commit([&] { seen.push_back(std::filesystem::exists(target.path("a")) ? "new" : "none"); });
  ASSERT_GE(seen.size(), 2u);
  EXPECT_EQ(seen.front(), "none");
  EXPECT_EQ(seen.back(), "new");
}

TEST_F(FileCopyTest, TheProgressStopsTheCopyAndNothingOfTheFileIsLeft) {
  source.write("large", std::string(9'000'000, 'x'));
  FileCopyBatch batch(fromTree, toTree);
  std::vector<std::uint64_t> seen;
  bool stopped = false;
  EXPECT_FALSE(batch.add(
      job("large", "large"), 0,
      [&seen](std::uint64_t bytes) {
        seen.push_back(bytes);
        return bytes == 0;
      },
      stopped));
  EXPECT_TRUE(stopped);
  ASSERT_EQ(seen.size(), 2u);
  EXPECT_EQ(seen[0], 0u);
  EXPECT_GT(seen[1], 0u);
  EXPECT_LT(seen[1], 9'000'000u);
  EXPECT_TRUE(batch.empty());
  EXPECT_EQ(target.entries(), 0u);
}

TEST_F(FileCopyTest, ASourceThatGrowsShrinksOrIsWrittenMeanwhileIsNotCopied) {
  const std::function<void(const std::string&)> changes[] = {
      [](const std::string& path) { std::ofstream(path, std::ios::app) << "more"; },
      [](const std::string& path) { std::filesystem::resize_file(path, 10); },
      [](const std::string& path) { setTime(path, kNew, 1); },
      [](const std::string& path) {
        std::ofstream(path, std::ios::app) << "more";
        setTime(path, kNew);
      },
  };
  for (const auto& change : changes) {
    const std::string path = source.write("a", std::string(5'000'000, 'x'));
    setTime(path, kNew);
    FileCopyBatch batch(fromTree, toTree);
    bool stopped = false;
    EXPECT_EQ(batch.add(
                  job("a", "a"), 0,
                  [&](std::uint64_t bytes) {
                    if (bytes == 0) change(path);
                    return true;
                  },
                  stopped),
              failures::changingFile());
    EXPECT_EQ(target.entries(), 0u);
  }
}

TEST_F(FileCopyTest, ASourceThatChangesOrVanishesBeforeTheCommitIsNotCopied) {
  setTime(target.write("a", "old"), kOld);
  setTime(target.write("b", "old"), kOld);
  source.write("a", "new");
  source.write("b", "new");
  FileCopyBatch batch(fromTree, toTree);
  bool stopped = false;
  ASSERT_FALSE(batch.add(job("a", "a"), 0, goOn, stopped));
  ASSERT_FALSE(batch.add(job("b", "b"), 1, goOn, stopped));
  source.write("c", "new");
  setTime(source.path("c"), kNew);
  ASSERT_FALSE(batch.add(job("c", "c"), 2, goOn, stopped));
  source.write("a", "newer");
  std::filesystem::remove(source.path("b"));
  setTime(source.write("other", "wen"), kNew);
  std::filesystem::rename(source.path("other"), source.path("c"));
  const std::vector<FileCopyResult> results = batch.commit(wait);
  EXPECT_EQ(results[2].failure, failures::changingFile()) << "it looks the same, and is another";
  EXPECT_EQ(results[0].failure, failures::changingFile());
  EXPECT_EQ(results[1].failure, (Failure{53, u"Fichier introuvable"}));
  EXPECT_EQ(target.read("a"), "old");
  EXPECT_EQ(target.read("b"), "old");
  EXPECT_EQ(target.entries(), 2u);
}

TEST_F(FileCopyTest, ASourceThatBecameNewerSinceTheComparisonIsCopiedAsItIs) {
  setTime(source.write("a", "compared"), kOld);
  const FileCopyJob asked = job("a", "a");
  setTime(source.write("a", "edited since"), kNew);
  EXPECT_FALSE(copy(asked));
  EXPECT_EQ(target.read("a"), "edited since");
}

TEST_F(FileCopyTest, ASourceThatBecameOlderSinceTheComparisonReplacesNothing) {
  setTime(source.write("a", "compared"), kNew);
  setTime(target.write("a", "old"), kNew - 10);
  const FileCopyJob asked = job("a", "a");
  setTime(source.write("a", "restored"), kNew - 1);
  EXPECT_EQ(copy(asked), failures::changedSinceCompared());
  EXPECT_EQ(target.read("a"), "old");
  EXPECT_EQ(target.entries(), 1u);
}

TEST_F(FileCopyTest, ASourceThatBecameOlderIsCopiedToWhereNothingStands) {
  setTime(source.write("a", "compared"), kNew);
  const FileCopyJob asked = job("a", "a");
  setTime(source.write("a", "restored"), kOld);
  EXPECT_FALSE(copy(asked));
  EXPECT_EQ(target.read("a"), "restored");
  EXPECT_EQ(stateOf(target.path("a")).modified, kOld);
}

TEST_F(FileCopyTest, ATargetThatIsNotAsItWasComparedIsNotOverwritten) {
  source.write("a", "new");
  FileCopyJob asked = job("a", "a");
  setTime(target.write("a", "came since"), kOld);
  EXPECT_EQ(copy(asked), (Failure{58, u"Le fichier existe déjà"}));

  asked = job("a", "a");
  setTime(target.write("a", "edited since"), kNew);
  EXPECT_EQ(copy(asked), failures::changedSinceCompared());
  EXPECT_EQ(target.read("a"), "edited since");

  // Also when a clock that was set back makes the edit look old.
  asked = job("a", "a");
  setTime(target.path("a"), kOld - 1000);
  EXPECT_EQ(copy(asked), failures::changedSinceCompared());
  EXPECT_EQ(target.read("a"), "edited since");
}

TEST_F(FileCopyTest, ATargetOfAnotherSizeIsNotTheOneThatWasCompared) {
  source.write("a", "new");
  setTime(target.write("a", "old"), kOld);
  const FileCopyJob asked = job("a", "a");
  setTime(target.write("a", "longer"), kOld);
  EXPECT_EQ(copy(asked), failures::changedSinceCompared());
  EXPECT_EQ(target.read("a"), "longer");
}

TEST_F(FileCopyTest, ATargetThatVanishedSinceTheComparisonIsMadeAnew) {
  source.write("a", "new");
  setTime(target.write("a", "old"), kOld);
  const FileCopyJob asked = job("a", "a");
  std::filesystem::remove(target.path("a"));
  EXPECT_FALSE(copy(asked));
  EXPECT_EQ(target.read("a"), "new");
}

TEST_F(FileCopyTest, ATargetThatVanishesBeforeTheCommitIsMadeAnew) {
  source.write("a", "new");
  setTime(target.write("a", "old"), kOld);
  FileCopyBatch batch(fromTree, toTree);
  bool stopped = false;
  ASSERT_FALSE(batch.add(job("a", "a"), 0, goOn, stopped));
  std::filesystem::remove(target.path("a"));
  EXPECT_FALSE(batch.commit(wait)[0].failure);
  EXPECT_EQ(target.read("a"), "new");
}

TEST_F(FileCopyTest, ATargetThatIsEditedBeforeTheCommitIsNotOverwritten) {
  source.write("a", "new");
  setTime(target.write("a", "old"), kOld);
  FileCopyBatch batch(fromTree, toTree);
  bool stopped = false;
  ASSERT_FALSE(batch.add(job("a", "a"), 0, goOn, stopped));
  setTime(target.write("a", "edited"), kNew);
  EXPECT_EQ(batch.commit(wait)[0].failure, failures::changedSinceCompared());
  EXPECT_EQ(target.read("a"), "edited");
}

TEST_F(FileCopyTest, ALinkedSourceIsCopiedAsTheFileItNames) {
  source.write("real", "content");
  ::symlink("real", source.path("link").c_str());
  EXPECT_FALSE(copy("link"));
  EXPECT_TRUE(
      std::filesystem::is_regular_file(std::filesystem::symlink_status(target.path("link"))));
  EXPECT_EQ(target.read("link"), "content");
}

TEST_F(FileCopyTest, ALinkedTargetStaysALinkAndItsFileIsReplaced) {
  Scratch elsewhere;
  source.write("a", "new");
  setTime(elsewhere.write("far", "old"), kOld);
  ::symlink(elsewhere.path("far").c_str(), target.path("a").c_str());
  EXPECT_FALSE(copy("a"));
  EXPECT_TRUE(std::filesystem::is_symlink(target.path("a")));
  EXPECT_EQ(elsewhere.read("far"), "new");
  EXPECT_EQ(elsewhere.entries(), 1u);
  EXPECT_EQ(target.entries(), 1u);
}

TEST_F(FileCopyTest, NothingIsWrittenThroughALinkToAFolder) {
  Scratch elsewhere;
  source.write("d/a", "new");
  ::symlink(elsewhere.path().c_str(), target.path("d").c_str());
  EXPECT_TRUE(copy("d/a"));
  EXPECT_EQ(elsewhere.entries(), 0u);
}

TEST_F(FileCopyTest, WhatIsNoFileIsNeitherCopiedNorReplaced) {
  ASSERT_EQ(::mkfifo(source.path("pipe").c_str(), 0644), 0);
  EXPECT_EQ(copy({.from = "pipe", .to = "pipe", .fromState = {}, .toState = {}}).number, 75);
  source.write("a", "new");
  ASSERT_EQ(::mkfifo(target.path("a").c_str(), 0644), 0);
  EXPECT_EQ(copy({.from = "a", .to = "a", .fromState = {}, .toState = {}}).number, 75);
  target.makeFolders("b");
  EXPECT_EQ(copy({.from = "a", .to = "b", .fromState = {}, .toState = {}}).number, 75);
  ::symlink("nowhere", target.path("c").c_str());
  EXPECT_EQ(copy({.from = "a", .to = "c", .fromState = {}, .toState = {}}).number, 75);
  EXPECT_EQ(target.entries(), 3u);
}

TEST_F(FileCopyTest, AMissingFolderOrFileIsAFailure) {
  source.write("a", "");
  EXPECT_EQ(copy({.from = "a", .to = "no/a", .fromState = {}, .toState = {}}).number, 53);
  EXPECT_EQ(copy({.from = "no/a", .to = "a", .fromState = {}, .toState = {}}).number, 53);
  EXPECT_EQ(copy({.from = "b", .to = "b", .fromState = {}, .toState = {}}).number, 53);
  EXPECT_EQ(target.entries(), 0u);
}

TEST_F(FileCopyTest, AReadOnlyFolderKeepsItsOldFile) {
  source.write("a", "new");
  setTime(target.write("a", "old"), kOld);
  ::chmod(source.path().c_str(), 0755);
  ::chmod(target.path().c_str(), 0555);
  const FileCopyJob asked = job("a", "a");
  EXPECT_EQ(inChildWithoutRights([&] { return copy(asked).number; }), 70);
  EXPECT_EQ(target.read("a"), "old");
  EXPECT_EQ(target.entries(), 1u);
}

TEST_F(FileCopyTest, AFileThatMayNotBeReadIsAFailure) {
  source.write("a", "secret", 0000);
  ::chmod(source.path().c_str(), 0755);
  ::chmod(target.path().c_str(), 0777);
  const FileCopyJob asked = job("a", "a");
  EXPECT_EQ(inChildWithoutRights([&] { return copy(asked).number; }), 70);
  EXPECT_EQ(target.entries(), 0u);
}

TEST_F(FileCopyTest, AFileThatIsTooLargeForTheDiskIsToldAndLeavesNothing) {
  source.write("a", std::string(100'000, 'x'));
  setTime(target.write("a", "old"), kOld);
  const FileCopyJob asked = job("a", "a");
  const int status = inChild([&] {
    std::signal(SIGXFSZ, SIG_IGN);
    const rlimit tight{1000, 1000};
    if (::setrlimit(RLIMIT_FSIZE, &tight) != 0) return 2;
    return copy(asked) == Failure{75, u"Fichier trop volumineux pour ce disque"} ? 0 : 1;
  });
  EXPECT_EQ(status, 0);
  EXPECT_EQ(target.read("a"), "old");
  EXPECT_EQ(target.entries(), 1u);
}

TEST_F(FileCopyTest, AFullDiskKeepsTheOldFileAndNothingElse) {
  const Mounted disk(target.path(), "size=64k");
  if (!disk) GTEST_SKIP() << kMayNotMount;
  open(source.text(), target.text());
  source.write("a", std::string(100'000, 'x'));
  setTime(target.write("a", "old"), kOld);
  EXPECT_EQ(copy("a"), (Failure{61, u"Disque plein"}));
  EXPECT_EQ(target.read("a"), "old");
  EXPECT_EQ(target.entries(), 1u);
}

TEST_F(FileCopyTest, BytesGoFromOneFileSystemToAnother) {
  const Mounted disk(target.path(), "size=16m");
  if (!disk) GTEST_SKIP() << kMayNotMount;
  open(source.text(), target.text());
  std::string bytes(5'000'001, 'x');
  for (std::size_t i = 0; i < bytes.size(); i += 1000) bytes[i] = static_cast<char>(i / 1000);
  setTime(source.write("a", bytes, 0640), kNew, 5);
  EXPECT_FALSE(copy("a"));
  EXPECT_TRUE(target.read("a") == bytes);
  EXPECT_EQ(stateOf(target.path("a")), stateOf(source.path("a")));
  EXPECT_EQ(statusOf(target.path("a")).st_mode & 07777, 0640u);
}

TEST_F(FileCopyTest, AFileWhoseSizeTheSystemMakesUpIsNotCopiedByHalves) {
  // It says that it is empty, and is not: what is taken over is what it says.
  open(u"/proc/self", target.text());
  EXPECT_FALSE(copy({.from = "status", .to = "status", .fromState = {}, .toState = {}}));
  EXPECT_EQ(target.read("status"), "");
}

TEST(CopyLeftover, NamesOfOtherKindsAreNone) {
  for (const char* name : {"a", ".tavrollo-copie-", ".tavrollo-copie-1-2-3", ".tavrollo-1-0.tmp",
                           ".tavrollo-copie-1.tmp", "x.tavrollo-copie-1-2-3.tmp",
                           ".tavrollo-copie-1-2-3-4.tmp", ".tavrollo-copie-1-2-3.tmp.doc"}) {
    EXPECT_FALSE(isCopyLeftover(name)) << name;
  }
}

TEST(CopyLeftover, ACopyOfAProcessThatIsGoneIsOne) {
  EXPECT_TRUE(isCopyLeftover(".tavrollo-copie-999999999-1-3.tmp"));
  // Another process has the number meanwhile: it was started at another time.
  EXPECT_TRUE(isCopyLeftover(".tavrollo-copie-1-123456789123-3.tmp"));
}

TEST(CopyLeftover, ACopyThatAnotherProcessIsMakingIsNone) {
  Scratch source;
  Scratch target;
  source.write("a", "");
  const pid_t child = ::fork();
  if (child == 0) {
    FolderTree from;
    FolderTree to;
    from.open(source.text());
    to.open(target.text());
    FileCopyBatch batch(from, to);
    bool stopped = false;
    batch.add({.from = "a", .to = "a", .fromState = {}, .toState = {}}, 0, goOn, stopped);
    for (;;) ::pause();
  }
  ASSERT_TRUE(waitUntil([&] { return target.entries() == 1; }));
  const std::string name = target.namesIn()[0];
  EXPECT_FALSE(isCopyLeftover(name));
  ::kill(child, SIGKILL);
  ::waitpid(child, nullptr, 0);
  EXPECT_TRUE(isCopyLeftover(name));
}

}  // namespace
