// SPDX-License-Identifier: GPL-3.0-or-later
#include <chrono>
#include <thread>

#include "WindowsSupport.h"
#include "platform/FileCopy.h"
#include "platform/windows/CopyNames.h"
#include "platform/windows/SystemError.h"

namespace {

constexpr std::int64_t kSecond = 10'000'000;
constexpr std::int64_t kOld = 1'000'000'000 * kSecond;
constexpr std::int64_t kNew = 1'400'000'001 * kSecond;

bool goOn(std::uint64_t) { return true; }
void wait() {}

std::int64_t ticksOf(const Text& path) { return fileStamp(path).value().modified / 100; }

FileState stateOf(const Text& path) {
  return {.modified = ticksOf(path) / kSecond, .size = fileStamp(path).value().size};
}

class FileCopyTest : public ::testing::Test {
 protected:
  void SetUp() override {
    ASSERT_FALSE(fromTree.open(source.text()));
    ASSERT_FALSE(toTree.open(target.text()));
  }

  // The job as a comparison of the two folders would give it.
  FileCopyJob job(const std::string& name) const {
    FileCopyJob made{.from = toPath(fromUtf8(name)).make_preferred().native(),
                     .to = toPath(fromUtf8(name)).make_preferred().native(),
                     .fromState = stateOf(source.text(name)),
                     .toState = {}};
    if (somethingAt(target.text(name))) made.toState = stateOf(target.text(name));
    return made;
  }

  Failure copy(const FileCopyJob& asked) {
    FileCopyBatch batch(fromTree, toTree);
    bool stopped = false;
    if (Failure failure = batch.add(asked, 7, goOn, stopped)) return failure;
    const std::vector<FileCopyResult> results = batch.commit(wait);
    EXPECT_EQ(results.size(), 1u);
    EXPECT_EQ(results[0].ticket, 7u);
    return results[0].failure;
  }
  Failure copy(const std::string& name) { return copy(job(name)); }

  Scratch source;
  Scratch target;
  FolderTree fromTree;
  FolderTree toTree;
};

TEST_F(FileCopyTest, ANewFileHasBytesTimeAndAttributesOfTheSource) {
  source.write("a", "content");
  setTime(source.text("a"), kNew + 1'234'567);
  setAttributes(source.text("a"), FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_HIDDEN);
  EXPECT_FALSE(copy("a"));
  EXPECT_EQ(target.read("a"), "content");
  EXPECT_EQ(ticksOf(target.text("a")), kNew + 1'234'567);
  constexpr DWORD kBoth = FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_HIDDEN;
  EXPECT_EQ(attributesOf(target.text("a")) & kBoth, kBoth);
  EXPECT_EQ(target.entries(), 1u);
  for (const Scratch* side : {&source, &target}) {
    setAttributes(side->text("a"), FILE_ATTRIBUTE_NORMAL);
  }
}

TEST_F(FileCopyTest, AnOrdinaryFileIsNotHiddenBehind) {
  source.write("a", "content");
  EXPECT_FALSE(copy("a"));
  EXPECT_EQ(attributesOf(target.text("a")) & FILE_ATTRIBUTE_HIDDEN, 0u);
}

TEST_F(FileCopyTest, AnOldFileIsReplacedAlsoWhenItIsWriteProtected) {
  source.write("a", "new");
  target.write("a", "old");
  setTime(target.text("a"), kOld);
  setAttributes(target.text("a"), FILE_ATTRIBUTE_READONLY);
  EXPECT_FALSE(copy("a"));
  EXPECT_EQ(target.read("a"), "new");
  EXPECT_EQ(target.entries(), 1u);
}

TEST_F(FileCopyTest, AFileThatCannotBeReplacedStaysAsItWas) {
  source.write("a", "new");
  target.write("a", "old");
  const FileCopyJob asked = job("a");
  const Handle selfish = openAs(target.text("a"), GENERIC_READ, FILE_SHARE_READ);
  EXPECT_EQ(copy(asked).number, 70);
  EXPECT_EQ(target.read("a"), "old");
  EXPECT_EQ(target.entries(), 1u);
}

TEST_F(FileCopyTest, EmptyAndLargeFilesArriveWhole) {
  source.write("empty", "");
  std::string large(1'000'001, 'x');
  for (std::size_t i = 0; i < large.size(); i += 4096) large[i] = static_cast<char>(i / 4096);
  source.write("large", large);
  EXPECT_FALSE(copy("empty"));
  EXPECT_FALSE(copy("large"));
  EXPECT_EQ(target.read("empty"), "");
  EXPECT_TRUE(target.read("large") == large);
}

TEST_F(FileCopyTest, WhatIsOpenForWritingIsCopiedAllTheSame) {
  source.write("a", "content");
  const Handle writer = openAs(source.text("a"), GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE);
  ASSERT_TRUE(writer.isOpen());
  EXPECT_FALSE(copy("a"));
  EXPECT_EQ(target.read("a"), "content");
}

TEST_F(FileCopyTest, ATargetThatIsNotAsItWasIsRefused) {
  source.write("a", "new");
  target.write("a", "old");
  setTime(target.text("a"), kOld);
  const FileCopyJob asked = job("a");
  setTime(target.text("a"), kNew);
  EXPECT_EQ(copy(asked), failures::changedSinceCompared());
  ASSERT_TRUE(::DeleteFileW(longPath(target.text("a")).c_str()));
  EXPECT_FALSE(copy(asked)) << "what vanished is made anew";
  ASSERT_TRUE(::DeleteFileW(longPath(target.text("a")).c_str()));
  FileCopyJob fresh = job("a");
  target.write("a", "came meanwhile");
  EXPECT_EQ(copy(fresh).number, 58);
  EXPECT_EQ(target.read("a"), "came meanwhile");
}

TEST_F(FileCopyTest, WhatChangesBetweenWritingAndRenamingIsRefused) {
  source.write("a", "new");
  source.write("b", "new");
  source.write("c", "new");
  target.write("b", "old");
  FileCopyBatch batch(fromTree, toTree);
  bool stopped = false;
  for (const char* name : {"a", "b", "c"}) ASSERT_FALSE(batch.add(job(name), 0, goOn, stopped));
  target.write("a", "came meanwhile");
  target.write("b", "changed meanwhile");
  source.write("c", "changed meanwhile");
  const std::vector<FileCopyResult> results = batch.commit(wait);
  ASSERT_EQ(results.size(), 3u);
  EXPECT_EQ(results[0].failure.number, 58);
  EXPECT_EQ(results[1].failure, failures::changedSinceCompared());
  EXPECT_EQ(results[2].failure, failures::changingFile());
  EXPECT_EQ(target.read("a"), "came meanwhile");
  EXPECT_EQ(target.read("b"), "changed meanwhile");
  EXPECT_EQ(target.entries(), 2u);
}

TEST_F(FileCopyTest, ASourceThatBecameOlderReplacesNothingAndANewerOneIsTaken) {
  source.write("a", "content");
  setTime(source.text("a"), kNew);
  target.write("a", "old");
  FileCopyJob asked = job("a");
  ++asked.fromState.modified;
  EXPECT_EQ(copy(asked), failures::changedSinceCompared());
  EXPECT_EQ(target.read("a"), "old");
  asked.fromState.modified -= 2;
  EXPECT_FALSE(copy(asked));
}

TEST_F(FileCopyTest, ASourceThatBecameOlderIsCopiedToWhereNothingStands) {
  source.write("a", "content");
  setTime(source.text("a"), kOld);
  FileCopyJob asked = job("a");
  ++asked.fromState.modified;
  EXPECT_FALSE(copy(asked));
  EXPECT_EQ(target.read("a"), "content");
}

TEST_F(FileCopyTest, AStoppedCopyLeavesNothing) {
  source.write("a", std::string(1'000'000, 'x'));
  FileCopyBatch batch(fromTree, toTree);
  bool stopped = false;
  const auto stop = [](std::uint64_t bytes) { return bytes < 300'000; };
  EXPECT_FALSE(batch.add(job("a"), 0, stop, stopped));
  EXPECT_TRUE(stopped);
  EXPECT_TRUE(batch.empty());
  EXPECT_EQ(target.entries(), 0u);
}

TEST_F(FileCopyTest, ABatchThatIsNotCommittedLeavesNothing) {
  source.write("a", "content");
  setAttributes(source.text("a"), FILE_ATTRIBUTE_READONLY);
  {
    FileCopyBatch batch(fromTree, toTree);
    bool stopped = false;
    EXPECT_FALSE(batch.add(job("a"), 0, goOn, stopped));
    ASSERT_EQ(target.entries(), 1u);
    const std::string hidden = target.namesIn().front();
    EXPECT_TRUE(hidden.starts_with(".tavrollo-copie-")) << hidden;
    EXPECT_TRUE((attributesOf(target.text(hidden)) & FILE_ATTRIBUTE_READONLY) != 0);
  }
  EXPECT_EQ(target.entries(), 0u);
  setAttributes(source.text("a"), FILE_ATTRIBUTE_NORMAL);
}

TEST_F(FileCopyTest, AFullBatchIsCommittedTogether) {
  FileCopyBatch batch(fromTree, toTree);
  bool stopped = false;
  std::size_t count = 0;
  for (; !batch.full(); ++count) {
    const std::string name = std::to_string(count);
    source.write(name, name);
    ASSERT_FALSE(batch.add(job(name), count, goOn, stopped));
  }
  EXPECT_EQ(count, 500u);
  for (const FileCopyResult& result : batch.commit(wait)) EXPECT_FALSE(result.failure);
  EXPECT_TRUE(batch.empty());
  EXPECT_EQ(target.entries(), count);
  EXPECT_EQ(target.read("499"), "499");
}

TEST(CopyLeftover, ACopyOfAProcessThatIsGoneIsOne) {
  EXPECT_TRUE(isCopyLeftover(L".tavrollo-copie-999999999-1-0.tmp"));
  EXPECT_TRUE(isCopyLeftover(hiddenCopyName(hiddenCopyPrefix(), 3)));
}

TEST(CopyLeftover, ACopyThatAnotherProcessIsMakingIsNone) {
  const Scratch scratch;
  const Variable runtime("LOCALAPPDATA", scratch.text());
  Child other({helperAs(scratch, "helper.exe"), u"--deaf", u"C:\\a"});
  ASSERT_TRUE(waitUntil([&] { return somethingAt(scratch.text("ready")); }));
  const std::wstring process = std::to_wstring(other.processId());
  const Handle handle(::OpenProcess(PROCESS_QUERY_LIMITED_INFORMATION, FALSE,
                                    static_cast<DWORD>(other.processId())));
  FILETIME times[4];
  ASSERT_TRUE(::GetProcessTimes(handle.get(), &times[0], &times[1], &times[2], &times[3]));
  const std::uint64_t start =
      (std::uint64_t{times[0].dwHighDateTime} << 32) | times[0].dwLowDateTime;
  const std::wstring begin = L".tavrollo-copie-" + process + L"-";
  EXPECT_FALSE(isCopyLeftover(begin + std::to_wstring(start) + L"-0.tmp"));
  EXPECT_TRUE(isCopyLeftover(begin + std::to_wstring(start + 1) + L"-0.tmp"));
}

TEST(CopyLeftover, NamesOfOtherKindsAreNone) {
  for (const wchar_t* name : {L"", L"a", L".tavrollo-copie-1-1-1", L".tavrollo-copie-1-1.tmp",
                              L".tavrollo-copie-.tmp", L".tavrollo-copie-a-1-1.tmp",
                              L".tavrollo-copie-1-1-1-1.tmp", L"tavrollo-copie-1-1-1.tmp"}) {
    EXPECT_FALSE(isCopyLeftover(name)) << toUtf8(fromWide(name));
  }
}

TEST_F(FileCopyTest, WhoSoonLetsGoOfTheOldFileDoesNotKeepItFromBeingReplaced) {
  source.write("a", "new");
  target.write("a", "old");
  setTime(target.text("a"), kOld);
  FileCopyBatch batch(fromTree, toTree);
  bool stopped = false;
  ASSERT_FALSE(batch.add(job("a"), 0, goOn, stopped));
  Handle reader = openAs(target.text("a"), GENERIC_READ, FILE_SHARE_READ);
  ASSERT_TRUE(reader.isOpen());
  std::thread letsGo([&reader] {
    std::this_thread::sleep_for(std::chrono::milliseconds(50));
    reader.close();
  });
  const std::vector<FileCopyResult> results = batch.commit(wait);
  letsGo.join();
  EXPECT_EQ(results[0].failure, Failure());
  EXPECT_EQ(target.read("a"), "new");
  EXPECT_EQ(target.entries(), 1u);
}

TEST_F(FileCopyTest, WhileAnOldFileIsWaitedForTheWindowIsGivenItsTurn) {
  source.write("a", "new");
  target.write("a", "old");
  setTime(target.text("a"), kOld);
  FileCopyBatch batch(fromTree, toTree);
  bool stopped = false;
  ASSERT_FALSE(batch.add(job("a"), 0, goOn, stopped));
  const Handle selfish = openAs(target.text("a"), GENERIC_READ, FILE_SHARE_READ);
  int turns = 0;
  EXPECT_EQ(batch.commit([&turns] { ++turns; })[0].failure.number, 70);
  EXPECT_GE(turns, 10);
  EXPECT_EQ(target.read("a"), "old");
  EXPECT_EQ(target.entries(), 1u);
}

TEST(SystemError, AFileThatIsTooLargeForTheDiskIsTold) {
  EXPECT_EQ(failureFromSystem(ERROR_FILE_TOO_LARGE),
            (Failure{75, u"Fichier trop volumineux pour ce disque"}));
}

}  // namespace
