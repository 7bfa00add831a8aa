// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>
#ifndef TAVROLLO_WITHOUT_POSIX
#include <sys/resource.h>
#endif

#include "SyncSupport.h"
#include "platform/FileCopy.h"
#include "support/Doubles.h"
#include "support/Processes.h"
#include "sync/Execution.h"

namespace {

using Lines = std::vector<std::string>;

class ExecutionTest : public ::testing::Test {
 protected:
  void SetUp() override {
    constexpr auto kForAll = static_cast<std::filesystem::perms>(0755);
    std::filesystem::permissions(source.path(), kForAll);
    std::filesystem::permissions(backup.path(), kForAll);
  }

  void list() {
    ours = listFolder(source.text() + nativeSeparator(), u"", Side::Source, progress);
    theirs = listFolder(backup.text() + nativeSeparator(), u"", Side::Backup, progress);
    rows = compareListings(ours, theirs).rows;
    progress.lines.clear();
  }
  SyncReport execute() { return executeRows(ours, theirs, rows, questions, progress); }
  SyncReport synchronise() {
    list();
    return execute();
  }

  Scratch source;
  Scratch backup;
  Listing ours;
  Listing theirs;
  std::vector<DifferenceRow> rows;
  RecordingProgress progress;
  Journal journal;
  ScriptedQuestions questions{journal};
};

TEST_F(ExecutionTest, EachRowGoesInItsDirectionAndNothingIsLeftToDo) {
  setTime(source.write("docs/new", "0"), kOld);
  setTime(source.write("newer", "1"), kNew);
  setTime(backup.write("newer", "stale"), kOld);
  setTime(backup.write("deep/er/restored", "2"), kOld);
  setTime(source.write("older", "stale"), kOld);
  setTime(backup.write("older", "3"), kNew);
  const SyncReport report = synchronise();
  EXPECT_EQ(report.copied, 4u);
  EXPECT_TRUE(report.notCopied.empty());
  EXPECT_FALSE(report.stopped);
  EXPECT_EQ(backup.read("docs/new"), "0");
  EXPECT_EQ(backup.read("newer"), "1");
  EXPECT_EQ(source.read("deep/er/restored"), "2");
  EXPECT_EQ(source.read("older"), "3");
  EXPECT_EQ(differencesOf(source, backup), Lines{});
  EXPECT_EQ(progress.lines, Lines{"Synchronisation : 4 fichiers copiés, 0 non copié"});
}

TEST_F(ExecutionTest, NothingIsEverDeleted) {
  source.write("only here", "");
  backup.write("only there", "");
  synchronise();
  EXPECT_EQ(source.entries(), 2u);
  EXPECT_EQ(backup.entries(), 2u);
}

TEST_F(ExecutionTest, AnActionOfFourOrMoreCopiesNothing) {
  source.write("a", "");
  list();
  rows[0].action = static_cast<SyncAction>(4);
  rows.push_back({.action = static_cast<SyncAction>(9)});
  const SyncReport report = execute();
  EXPECT_EQ(report.copied, 0u);
  EXPECT_TRUE(report.notCopied.empty());
  EXPECT_EQ(backup.entries(), 0u);
  EXPECT_EQ(progress.copied.size(), 2u);
}

TEST_F(ExecutionTest, ACopyOverAPartnerKeepsThePartnersSpelling) {
  setTime(source.write("Docs/A.txt", "new"), kNew);
  setTime(backup.write("docs/a.txt", "old"), kOld);
  setTime(source.write("B", "old"), kOld);
  setTime(backup.write("b", "new"), kNew);
  EXPECT_EQ(synchronise().copied, 2u);
  EXPECT_EQ(backup.read("docs/a.txt"), "new");
  EXPECT_EQ(source.read("B"), "new");
  EXPECT_EQ(backup.entries(), 2u);
  EXPECT_EQ(source.entries(), 2u);
}

#ifndef TAVROLLO_WITHOUT_POSIX  // no two names differ so there, and none is bytes
TEST_F(ExecutionTest, NamesThatDifferOnlyInCapitalsAreAllCopied) {
  setTime(source.write("a", "small"), kOld);
  setTime(source.write("A", "large"), kNew);
  EXPECT_EQ(synchronise().copied, 2u);
  EXPECT_EQ(backup.read("a"), "small");
  EXPECT_EQ(backup.read("A"), "large");
  EXPECT_EQ(differencesOf(source, backup), Lines{});
}

TEST_F(ExecutionTest, AnyNameIsCopied) {
  const Lines names = {"\xFF\xFE", "caf\xE9", "two\nlines", "back\\slash", " ", "-x", "a\tb"};
  for (const std::string& name : names) source.write(name + "/" + name, name);
  EXPECT_EQ(synchronise().copied, names.size());
  for (const std::string& name : names) EXPECT_EQ(backup.read(name + "/" + name), name);
  EXPECT_EQ(differencesOf(source, backup), Lines{});
}
#endif

TEST_F(ExecutionTest, TheProgressIsToldEachRowAndItsBytes) {
  source.write("a", "12345");
  source.write("b", "");
  backup.write("c", "123");
  synchronise();
  using Calls = std::vector<std::pair<std::size_t, std::uint64_t>>;
  Calls rowsBegun;
  for (const auto& call : progress.copied) {
    if (call.second == 0) rowsBegun.push_back(call);
  }
  EXPECT_EQ(rowsBegun, (Calls{{0, 0}, {1, 0}, {2, 0}}));
#ifndef TAVROLLO_WITHOUT_POSIX  // there, a quick flush is over before anybody waits
  EXPECT_GE(progress.waits, 4) << "two flushes on each side";
#endif
}

TEST_F(ExecutionTest, ARowThatFailsAtOnceIsToldTheProgressToo) {
  source.write("changed", "1");
  source.write("d/no folder", "2");
  source.write("vanished", "3");
  source.write("well", "4");
  list();
  ASSERT_EQ(rows.size(), 4u);
  backup.write("changed", "came since");
  backup.write("d", "no folder");
  std::filesystem::remove(source.path("vanished"));
  questions.answers = {Answer::Ok};
  EXPECT_EQ(execute().copied, 1u);
  std::vector<std::size_t> rowsBegun;
  for (const auto& [row, bytes] : progress.copied) {
    if (bytes == 0) rowsBegun.push_back(row);
  }
  EXPECT_EQ(rowsBegun, (std::vector<std::size_t>{0, 1, 2, 3}));
}

TEST_F(ExecutionTest, TheProgressStopsTheWorkAndWhatIsCopiedStays) {
  for (const char* name : {"a", "b", "c", "d"}) source.write(name, name);
  progress.stopCopying = [](std::size_t row, std::uint64_t) { return row == 2; };
  const SyncReport report = synchronise();
  EXPECT_TRUE(report.stopped);
  EXPECT_EQ(report.copied, 2u);
  EXPECT_EQ(backup.entries(), 2u);
  EXPECT_EQ(backup.read("b"), "b");
}

TEST_F(ExecutionTest, WhatCannotBeCopiedIsTracedAndTheRestGoesOn) {
  source.write("a", "1");
  source.write("b", "2");
  source.write("c", "3");
  list();
  std::filesystem::remove(source.path("b"));
  const SyncReport report = execute();
  EXPECT_EQ(report.copied, 2u);
  ASSERT_EQ(report.notCopied.size(), 1u);
  EXPECT_EQ(report.notCopied[0].row, 1u);
  EXPECT_EQ(report.notCopied[0].failure.number, 53);
  EXPECT_EQ(progress.lines, (Lines{"Synchronisation - non copié : " + slashed(source.path()) +
                                       "/b : Fichier introuvable",
                                   "Synchronisation : 2 fichiers copiés, 1 non copié"}));
}

TEST_F(ExecutionTest, AFileThatIsWrittenWhileItIsCopiedIsShownAgainByTheNextComparison) {
  source.write("a", std::string(5'000'000, 'x'));
  source.write("b", "2");
  list();
  progress.whileCopying = [this](std::size_t row, std::uint64_t bytes) {
    if (row == 0 && bytes > 0) std::ofstream(source.path("a"), std::ios::app) << "more";
  };
  const SyncReport report = execute();
  EXPECT_EQ(report.copied, 1u);
  ASSERT_EQ(report.notCopied.size(), 1u);
  EXPECT_EQ(report.notCopied[0].failure, failures::changingFile());
  EXPECT_EQ(backup.entries(), 1u);
  EXPECT_EQ(differencesOf(source, backup), Lines{"0 a -"});
}

TEST_F(ExecutionTest, ABackupThatWasEditedSinceIsNotOverwritten) {
  setTime(source.write("a", "mine"), kNew);
  setTime(backup.write("a", "old"), kOld);
  source.write("b", "mine");
  list();
  setTime(backup.write("a", "edited there"), kNew + 100);
  backup.write("b", "made there");
  const SyncReport report = execute();
  EXPECT_EQ(report.copied, 0u);
  EXPECT_EQ(report.notCopied.size(), 2u);
  EXPECT_EQ(backup.read("a"), "edited there");
  EXPECT_EQ(backup.read("b"), "made there");
}

TEST_F(ExecutionTest, AMissingBackupFolderIsMade) {
  source.write("d/a", "content");
  ours = listFolder(source.text() + nativeSeparator(), u"", Side::Source, progress);
  theirs = listFolder(backup.text("new/place") + nativeSeparator(), u"", Side::Backup, progress);
  rows = compareListings(ours, theirs).rows;
  EXPECT_EQ(execute().copied, 1u);
  EXPECT_EQ(backup.read("new/place/d/a"), "content");
}

TEST_F(ExecutionTest, ABackupFolderThatWasRemovedSinceIsMadeAnew) {
  source.write("a", "1");
  setTime(source.write("b", "new"), kNew);
  setTime(backup.write("deep/folder/b", "old"), kOld);
  ours = listFolder(source.text() + nativeSeparator(), u"", Side::Source, progress);
  theirs = listFolder(backup.text("deep/folder") + nativeSeparator(), u"", Side::Backup, progress);
  rows = compareListings(ours, theirs).rows;
  std::filesystem::remove_all(backup.path("deep"));
  const SyncReport report = execute();
  EXPECT_EQ(report.copied, 2u);
  EXPECT_EQ(backup.read("deep/folder/a"), "1");
  EXPECT_EQ(backup.read("deep/folder/b"), "new");
  EXPECT_TRUE(questions.boxes.empty());
}

TEST_F(ExecutionTest, WithNothingToCopyNoFolderIsMade) {
  theirs = listFolder(backup.text("missing") + nativeSeparator(), u"", Side::Backup, progress);
  ours = listFolder(source.text() + nativeSeparator(), u"", Side::Source, progress);
  EXPECT_EQ(execute().copied, 0u);
  EXPECT_EQ(backup.entries(), 0u);
}

#ifndef TAVROLLO_WITHOUT_POSIX  // there, a folder that is open cannot be removed
TEST_F(ExecutionTest, AFolderThatIsRemovedBetweenTwoOfItsFilesIsMadeAnew) {
  source.write("d/a", "1");
  source.write("d/b", "2");
  list();
  progress.whileCopying = [this](std::size_t row, std::uint64_t bytes) {
    if (row == 0 && bytes > 0) std::filesystem::remove_all(backup.path("d"));
  };
  const SyncReport report = execute();
  EXPECT_EQ(backup.read("d/b"), "2");
  EXPECT_EQ(report.copied + report.notCopied.size(), 2u);
  progress.whileCopying = {};
  EXPECT_EQ(synchronise().notCopied.size(), 0u);
  EXPECT_EQ(differencesOf(source, backup), Lines{});
}
#endif

TEST_F(ExecutionTest, WhatAClockThatWasSetBackMakesLookOldIsNotOverwritten) {
  setTime(source.write("a", "mine"), kNew);
  setTime(backup.write("a", "old"), kOld);
  list();
  setTime(backup.write("a", "edited"), kOld - 1000);
  EXPECT_EQ(execute().copied, 0u);
  EXPECT_EQ(backup.read("a"), "edited");
}

TEST_F(ExecutionTest, AFolderThatCannotBeMadeIsToldOnceAndItsFilesAreCounted) {
  source.write("d/a", "1");
  source.write("d/b", "2");
  source.write("e/c", "3");
  backup.write("d", "a file");
  // The file called d has no partner, so it is restored; a folder stands there.
  questions.answers = {Answer::Ok};
  const SyncReport report = synchronise();
  EXPECT_EQ(report.copied, 1u);
  EXPECT_EQ(report.notCopied.size(), 3u);
  ASSERT_EQ(questions.boxes.size(), 1u);
  EXPECT_TRUE(questions.boxes[0].text.starts_with(u"Erreur dans CreateSubDir\n"));
  EXPECT_EQ(backup.read("d"), "a file");
  EXPECT_EQ(source.read("d/a"), "1");
}

TEST_F(ExecutionTest, FoldersThatFailForTheSameReasonAreToldOnceOnEachSide) {
  source.write("d/a", "1");
  source.write("e/b", "2");
  source.write("f/x/c", "3");
  backup.write("g/a", "4");
  backup.write("h/b", "5");
  list();
  for (const char* name : {"d", "e", "f"}) backup.write(name, "a file");
  for (const char* name : {"g", "h"}) source.write(name, "a file");
  questions.answers = {Answer::Ok, Answer::Ok};
  EXPECT_EQ(execute().notCopied.size(), 5u);
  EXPECT_EQ(questions.boxes.size(), 2u);
  EXPECT_EQ(progress.lines.size(), 6u) << "each is traced, and then the sum";
}

#ifndef TAVROLLO_WITHOUT_POSIX  // they make links, pipes and closed folders
TEST_F(ExecutionTest, AWriteProtectedBackupIsToldInOneBox) {
  for (const char* name : {"d/a", "d/x/a", "d/y/a", "e/a", "f/x/a"}) source.write(name, "");
  list();
  ::chmod(backup.path().c_str(), 0555);
  questions.answers = {Answer::Ok};
  EXPECT_EQ(inChildWithoutRights([&] {
              const SyncReport report = execute();
              return report.notCopied.size() == 5 && questions.boxes.size() == 1 &&
                             questions.boxes[0].text ==
                                 u"Erreur dans CreateSubDir\nPermission refusée"
                         ? 0
                         : 1;
            }),
            0);
}

TEST_F(ExecutionTest, AFolderIsToldOnceWhateverKeepsItAndWhatIsBelowItFromBeingMade) {
  source.write("d/a", "1");
  source.write("d/x/b", "2");
  source.write("e/c", "3");
  source.write("f/d", "4");
  list();
  backup.write("d", "a file");
  progress.whileCopying = [this](std::size_t row, std::uint64_t) {
    if (row == 1) std::filesystem::remove_all(backup.path());
  };
  questions.answers = {Answer::Ok, Answer::Ok};
  const SyncReport report = execute();
  ASSERT_EQ(report.notCopied.size(), 4u);
  const Text begin = u"Erreur dans CreateSubDir\n";
  ASSERT_EQ(questions.boxes.size(), 2u) << "for d, then for e, which fails for another reason";
  EXPECT_EQ(questions.boxes[0].text, begin + u"Chemin d'accès introuvable");
  EXPECT_EQ(questions.boxes[1].text, begin + u"Fichier introuvable");
}

TEST_F(ExecutionTest, AReadOnlyBackupKeepsItsFiles) {
  setTime(source.write("a", "new"), kNew);
  setTime(backup.write("a", "old"), kOld);
  source.write("b", "2");
  list();
  ::chmod(backup.path().c_str(), 0555);
  EXPECT_EQ(inChildWithoutRights([&] {
              const SyncReport report = execute();
              return report.copied == 0 && report.notCopied.size() == 2 &&
                             report.notCopied[0].failure.number == 70
                         ? 0
                         : 1;
            }),
            0);
  EXPECT_EQ(backup.read("a"), "old");
  EXPECT_EQ(backup.entries(), 1u);
}

TEST_F(ExecutionTest, AFolderThatIsClosedSinceTheComparisonIsTracedWithoutABox) {
  setTime(source.write("d/a", "new"), kNew);
  setTime(backup.write("d/a", "old"), kOld);
  source.write("e/b", "2");
  source.write("e/c", "3");
  list();
  ::chmod(backup.path().c_str(), 0777);
  ::chmod(backup.path("d").c_str(), 0);
  ::chmod(source.path("e").c_str(), 0);
  EXPECT_EQ(inChildWithoutRights([&] {
              const SyncReport report = execute();
              bool right = report.copied == 0 && report.notCopied.size() == 3;
              for (const NotCopied& failed : report.notCopied) {
                right = right && failed.failure.number == 70;
              }
              return right && questions.boxes.empty() ? 0 : 1;
            }),
            0);
  ::chmod(backup.path("d").c_str(), 0755);
  ::chmod(source.path("e").c_str(), 0755);
  EXPECT_EQ(backup.read("d/a"), "old");
}

TEST_F(ExecutionTest, ASideThatIsOutOfReachSinceTheComparisonIsTracedWithoutABox) {
  source.write("above/side/a", "1");
  backup.write("above/side/b", "2");
  ::chmod(source.path().c_str(), 0755);
  ::chmod(backup.path().c_str(), 0755);
  ours = listFolder(source.text("above/side") + u"/", u"", Side::Source, progress);
  theirs = listFolder(backup.text("above/side") + u"/", u"", Side::Backup, progress);
  rows = compareListings(ours, theirs).rows;
  for (const Scratch* closed : {&source, &backup}) {
    ::chmod(closed->path("above").c_str(), 0);
    EXPECT_EQ(inChildWithoutRights([&] {
                const SyncReport report = execute();
                bool right = report.copied == 0 && report.notCopied.size() == 2;
                for (const NotCopied& failed : report.notCopied) {
                  right = right && failed.failure.number == 70;
                }
                return right && questions.boxes.empty() ? 0 : 1;
              }),
              0);
    ::chmod(closed->path("above").c_str(), 0755);
  }
}

TEST_F(ExecutionTest, ALongRunKeepsFewFilesOpen) {
  for (int i = 0; i < 600; ++i)
    source.write("d" + std::to_string(i % 3) + "/" + std::to_string(i), "");
  list();
  EXPECT_EQ(inChild([&] {
              const rlimit few{.rlim_cur = 100, .rlim_max = 100};
              if (::setrlimit(RLIMIT_NOFILE, &few) != 0) return 2;
              return execute().copied == 600 ? 0 : 1;
            }),
            0);
}

TEST_F(ExecutionTest, AFolderThatMayNotBeReadMakesNothingOlderReturn) {
  setTime(source.write("closed/a", "precious"), kNew);
  setTime(backup.write("closed/a", "old"), kOld);
  setTime(source.write("b", "1"), kNew);
  ::chmod(source.path("closed").c_str(), 0);
  ::chmod(backup.path().c_str(), 0777);
  EXPECT_EQ(inChildWithoutRights([&] {
              const SyncReport report = synchronise();
              return report.copied == 1 && report.notCopied.empty() ? 0 : 1;
            }),
            0);
  ::chmod(source.path("closed").c_str(), 0755);
  EXPECT_EQ(source.read("closed/a"), "precious");
  EXPECT_EQ(differencesOf(source, backup), Lines{"1 closed/a closed/a"});
}

TEST_F(ExecutionTest, ALinkToAFolderMakesNothingOlderOverwriteWhatIsBehindIt) {
  Scratch elsewhere;
  setTime(elsewhere.write("a", "precious"), kNew);
  ::symlink(elsewhere.path().c_str(), backup.path("d").c_str());
  setTime(source.write("d/a", "old"), kOld);
  EXPECT_EQ(synchronise().copied, 0u);
  EXPECT_EQ(elsewhere.read("a"), "precious");
}

TEST_F(ExecutionTest, ALinkToNothingOrAPipeIsNotTakenForMissing) {
  ::symlink("nowhere", backup.path("a").c_str());
  ASSERT_EQ(::mkfifo(backup.path("b").c_str(), 0644), 0);
  source.write("a", "1");
  source.write("b", "2");
  EXPECT_EQ(synchronise().copied, 0u);
  EXPECT_TRUE(questions.boxes.empty());
  EXPECT_TRUE(std::filesystem::is_symlink(backup.path("a")));
  EXPECT_TRUE(std::filesystem::is_fifo(backup.path("b")));
}

TEST_F(ExecutionTest, ALinkedFileIsCopiedOverTheLinksTarget) {
  Scratch elsewhere;
  setTime(source.write("a", "new"), kNew);
  setTime(elsewhere.write("real", "old"), kOld);
  ::symlink(elsewhere.path("real").c_str(), backup.path("a").c_str());
  EXPECT_EQ(synchronise().copied, 1u);
  EXPECT_TRUE(std::filesystem::is_symlink(backup.path("a")));
  EXPECT_EQ(elsewhere.read("real"), "new");
  EXPECT_EQ(differencesOf(source, backup), Lines{});
}
#endif

TEST_F(ExecutionTest, LeftoversOfInterruptedCopiesGoOnBothSides) {
  source.write("d/.tavrollo-copie-999999999-1-0.tmp", "half");
  backup.write(".tavrollo-copie-999999999-1-1.tmp", "half");
  EXPECT_EQ(synchronise().copied, 0u);
  EXPECT_TRUE(source.namesIn("d").empty());
  EXPECT_EQ(backup.entries(), 0u);
}

#ifndef TAVROLLO_WITHOUT_POSIX  // Wine's own paths end at 4096 bytes
TEST_F(ExecutionTest, PathsLongerThanTheSystemTakesAtOnceAreCopied) {
  std::string folder = std::string(250, 'd');
  for (int i = 0; i < 19; ++i) folder += "/" + std::string(250, 'd');
  source.write("a", "deep down");
  {
    FolderTree tree;
    ASSERT_FALSE(tree.open(source.text()));
    ASSERT_FALSE(tree.makeFolder(folder));
    FileCopyBatch batch(tree, tree);
    bool stopped = false;
    ASSERT_FALSE(batch.add(
        {.from = "a", .to = folder + "/b", .fromState = {}, .toState = {}}, 0,
        [](std::uint64_t) { return true; }, stopped));
    ASSERT_FALSE(batch.commit([] {})[0].failure);
  }
  EXPECT_EQ(synchronise().copied, 2u);
  EXPECT_EQ(differencesOf(source, backup), Lines{});
  const Listing copied = listed(backup);
  ASSERT_EQ(copied.files.size(), 2u);
  EXPECT_EQ(copied.path(1), folder + "/b");
  EXPECT_EQ(copied.files[1].state.size, 9u);
}
#endif

TEST_F(ExecutionTest, WhatACoarseClockKeepsOfATimeIsTheSameTime) {
  setTime(source.write("a", "1"), kOld + 1);
  synchronise();
  ASSERT_EQ(timeOf(backup.path("a")), kOld + 1);
  setTime(backup.path("a"), kOld);  // kept to two seconds, cut
  EXPECT_EQ(differencesOf(source, backup), Lines{});
  setTime(backup.path("a"), kOld + 2);  // or rounded
  EXPECT_EQ(differencesOf(source, backup), Lines{});
}

TEST_F(ExecutionTest, MoreFilesThanABatchHoldsAreAllCopied) {
  for (int i = 0; i < 780; ++i) {
    const std::string name = "d" + std::to_string(i % 7) + "/" + std::to_string(i);
    setTime((i % 3 == 0 ? backup : source).write(name, name), kOld);
  }
  const SyncReport report = synchronise();
  EXPECT_EQ(report.copied, 780u);
  EXPECT_EQ(differencesOf(source, backup), Lines{});
  EXPECT_EQ(backup.read("d1/400"), "d1/400");
  EXPECT_EQ(source.read("d3/3"), "d3/3");
}

}  // namespace
