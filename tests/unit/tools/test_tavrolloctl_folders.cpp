// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>
#include <sstream>
#include <sys/stat.h>

#include "RunTavrolloctl.h"
#include "support/Processes.h"
#include "tools/Verbs.h"

namespace {

constexpr std::int64_t kOld = 1'000'000'000;
constexpr std::int64_t kNew = 1'000'000'100;

class Folders : public ::testing::Test {
 protected:
  void SetUp() override {
    folder.makeFolders("source");
    folder.makeFolders("backup");
  }

  void write(std::string_view name, std::string_view bytes, std::int64_t seconds) {
    const std::string path = folder.write(name, bytes);
    const timespec times[2] = {{.tv_sec = seconds, .tv_nsec = 0},
                               {.tv_sec = seconds, .tv_nsec = 0}};
    ASSERT_EQ(::utimensat(AT_FDCWD, path.c_str(), times, 0), 0);
  }
  void writeOneOfEach() {
    write("source/docs/new", "12345", kOld);
    write("source/newer", "1", kNew);
    write("backup/newer", "2", kOld);
    write("backup/restored", "3", kOld);
    write("source/older", "4", kOld);
    write("backup/older", "5", kNew);
  }

  Outcome run(const std::string& verb, std::vector<std::string> options = {}) {
    options.insert(options.begin(), {verb, folder.path("source"), folder.path("backup")});
    return runTavrolloctl(options);
  }

  const Variable zone{"TZ", "UTC"};
  Scratch folder;
};

constexpr const char* kNewRow = "0\tdocs/new\t09/09/2001 01:46:40\t5 o\t\t\t\n";
constexpr const char* kNewerRow =
    "1\tnewer\t09/09/2001 01:48:20\t1 o\tnewer\t09/09/2001 01:46:40\t1 o\n";
constexpr const char* kRestoredRow = "2\t\t\t\trestored\t09/09/2001 01:46:40\t1 o\n";
constexpr const char* kOlderRow =
    "3\tolder\t09/09/2001 01:46:40\t1 o\tolder\t09/09/2001 01:48:20\t1 o\n";

TEST_F(Folders, ComparePrintsARowForEachDifference) {
  writeOneOfEach();
  const Outcome compared = run("compare");
  EXPECT_EQ(compared.status, 1);
  EXPECT_EQ(compared.out, std::string(kNewerRow) + kOlderRow + kNewRow + kRestoredRow);
  EXPECT_EQ(compared.err, "");
  EXPECT_EQ(folder.namesIn("source").size(), 3u);
}

TEST_F(Folders, IdenticalFoldersPrintNothing) {
  write("source/a", "1", kOld);
  write("backup/a", "1", kOld + 5);
  for (const char* verb : {"compare", "sync"}) {
    const Outcome compared = run(verb);
    EXPECT_EQ(compared.status, 0) << verb;
    EXPECT_EQ(compared.out, "") << verb;
  }
}

TEST_F(Folders, NamesAreOneLineEachAndKeepTheirBytes) {
  write("source/a\tb\nc\\d\re\xE9", "", kOld);
  EXPECT_EQ(run("compare").out, "0\ta\\tb\\nc\\\\d\\re\xE9\t09/09/2001 01:46:40\t0 o\t\t\t\n");
}

TEST_F(Folders, SyncCopiesBothWaysAndPrintsWhatItCopied) {
  writeOneOfEach();
  const Outcome synced = run("sync");
  EXPECT_EQ(synced.status, 0);
  EXPECT_EQ(synced.out, std::string(kNewerRow) + kOlderRow + kNewRow + kRestoredRow);
  EXPECT_EQ(synced.err, "Synchronisation : 4 fichiers copiés, 0 non copié\n");
  EXPECT_EQ(folder.read("backup/docs/new"), "12345");
  EXPECT_EQ(folder.read("source/restored"), "3");
  EXPECT_EQ(folder.read("source/older"), "5");
  EXPECT_EQ(run("compare").status, 0);
}

TEST_F(Folders, TheShortcutTableIsAFileAsAnyOther) {
  write("nav/res_css/js/shortQrCode.js", "live", kNew);
  folder.makeFolders("nav/user_datas");
  write("backup/shortQrCode.js", "other", kOld);
  for (const std::string verb : {"compare", "sync"}) {
    runTavrolloctl({verb, folder.path("nav/user_datas"), folder.path("backup")});
    EXPECT_EQ(folder.read("nav/res_css/js/shortQrCode.js"), "live") << verb;
  }
  EXPECT_EQ(folder.read("nav/user_datas/shortQrCode.js"), "other");
}

TEST_F(Folders, ADryRunCopiesNothing) {
  writeOneOfEach();
  const Outcome tried = run("sync", {"--dry-run"});
  EXPECT_EQ(tried.status, 1);
  EXPECT_EQ(tried.out, run("compare").out);
  EXPECT_EQ(tried.err, "");
  EXPECT_EQ(folder.read("backup/newer"), "2");
}

TEST_F(Folders, ADirectionLeavesTheOtherRows) {
  writeOneOfEach();
  const Outcome forth = run("sync", {"--direction", "to-backup"});
  EXPECT_EQ(forth.status, 1);
  EXPECT_EQ(forth.out, std::string(kNewerRow) + kNewRow);
  EXPECT_EQ(run("compare").out, std::string(kOlderRow) + kRestoredRow);
  const Outcome back = run("sync", {"--direction", "to-source"});
  EXPECT_EQ(back.status, 0);
  EXPECT_EQ(back.out, std::string(kOlderRow) + kRestoredRow);
  EXPECT_EQ(run("sync", {"--direction", "both"}).status, 0);
}

TEST_F(Folders, AFilterIsForFileNames) {
  write("source/a.doc", "", kOld);
  write("source/b.txt", "", kOld);
  EXPECT_EQ(run("compare", {"--filter", "*.DOC"}).out,
            "0\ta.doc\t09/09/2001 01:46:40\t0 o\t\t\t\n");
  EXPECT_EQ(run("sync", {"--filter", "*.doc"}).status, 0);
  EXPECT_EQ(folder.namesIn("backup"), std::vector<std::string>{"a.doc"});
}

TEST_F(Folders, WhatCannotBeCopiedIsSaidAndTheStatusIsTwo) {
  write("source/a", "1", kOld);
  write("source/b/c", "2", kOld);
  write("backup/b", "a file", kOld);
  const Outcome synced = run("sync");
  EXPECT_EQ(synced.status, 2);
  EXPECT_EQ(synced.out, "0\ta\t09/09/2001 01:46:40\t1 o\t\t\t\n");
  EXPECT_NE(synced.err.find("non copié : " + folder.path("source/b/c") + " : "), std::string::npos);
  EXPECT_NE(synced.err.find("1 fichier copié, 2 non copiés\n"), std::string::npos);
}

TEST_F(Folders, WhatCannotBeReadIsSaidAndTheStatusIsTwo) {
  write("source/closed/a", "1", kOld);
  write("backup/closed/a", "0", kOld - 50);
  ::chmod(folder.path().c_str(), 0755);
  ::chmod(folder.path("source/closed").c_str(), 0);
  std::ostringstream out;
  std::ostringstream err;
  EXPECT_EQ(inChildWithoutRights([&] {
              return compareVerb({folder.path("source"), folder.path("backup")}, out, err);
            }),
            2);
  // What is behind the closed folder may be newer: the older copy does not go over it.
  EXPECT_EQ(inChildWithoutRights([&] {
              const int status = syncVerb({folder.path("source"), folder.path("backup")}, out, err);
              return out.str().empty() ? status : 99;
            }),
            2);
  ::chmod(folder.path("source/closed").c_str(), 0755);
  EXPECT_EQ(folder.read("source/closed/a"), "1");
  ::chmod(folder.path("backup/closed").c_str(), 0);
  EXPECT_EQ(inChildWithoutRights([&] {
              return compareVerb({folder.path("source"), folder.path("backup")}, out, err);
            }),
            2);
  ::chmod(folder.path("backup/closed").c_str(), 0755);
}

TEST_F(Folders, LinksToFoldersAndPipesAreSaidAndNoTrouble) {
  ::symlink(".", folder.path("source/loop").c_str());
  ASSERT_EQ(::mkfifo(folder.path("source/pipe").c_str(), 0644), 0);
  const Outcome compared = run("compare");
  EXPECT_EQ(compared.status, 0);
  EXPECT_EQ(compared.err, "Synchronisation - non comparé : " + folder.path("source") +
                              "/loop : lien vers un dossier\nSynchronisation - non comparé : " +
                              folder.path("source") + "/pipe : ni fichier ni dossier\n");
}

TEST_F(Folders, FilesThatAreWithheldAreTrouble) {
  write("source/d/a", "1", kOld);
  write("source/b", "1", kOld);
  folder.makeFolders("elsewhere");
  ::symlink("../elsewhere", folder.path("backup/d").c_str());
  const std::string line = "Synchronisation - l'autre côté n'est pas connu : 1 fichier\n";
  const Outcome compared = run("compare");
  EXPECT_EQ(compared.status, 2);
  EXPECT_EQ(compared.out, "0\tb\t09/09/2001 01:46:40\t1 o\t\t\t\n");
  EXPECT_TRUE(compared.err.ends_with(line));
  const Outcome synced = run("sync");
  EXPECT_EQ(synced.status, 2);
  EXPECT_NE(synced.err.find(line), std::string::npos);
  EXPECT_EQ(folder.read("backup/b"), "1");
  EXPECT_EQ(run("sync").status, 2) << "with no row left too";
  EXPECT_TRUE(folder.namesIn("elsewhere").empty());
}

TEST_F(Folders, AMissingFolderIsTroubleAndNothingIsMade) {
  write("source/a", "", kOld);
  for (const std::string verb : {"compare", "sync"}) {
    const Outcome there = runTavrolloctl({verb, folder.path("source"), folder.path("gone")});
    EXPECT_EQ(there.status, 2);
    EXPECT_EQ(there.out, "");
    EXPECT_EQ(there.err, "Le dossier " + folder.path("gone") + "/ n'existe pas.\n");
    EXPECT_EQ(runTavrolloctl({verb, folder.path("gone"), folder.path("backup")}).status, 2);
  }
  EXPECT_EQ(folder.entries(), 2u);
}

TEST_F(Folders, AFolderInTheOtherIsRefused) {
  folder.makeFolders("source/inner");
  for (const std::string verb : {"compare", "sync"}) {
    const Outcome refused =
        runTavrolloctl({verb, folder.path("source"), folder.path("source/inner")});
    EXPECT_EQ(refused.status, 2);
    EXPECT_EQ(refused.err, "L'un des deux dossiers est dans l'autre.\n");
  }
}

TEST_F(Folders, OtherArgumentsGetTheUsage) {
  for (const std::string verb : {"compare", "sync"}) {
    const std::vector<std::vector<std::string>> wrong = {{verb},
                                                         {verb, "a"},
                                                         {verb, "a", "b", "c"},
                                                         {verb, "a", ""},
                                                         {verb, "a", "b", "--filter"},
                                                         {verb, "a", "b", "-x"},
                                                         {verb, "a", "b", "--direction", "up"}};
    for (const std::vector<std::string>& arguments : wrong) {
      const Outcome refused = runTavrolloctl(arguments);
      EXPECT_EQ(refused.status, 2);
      EXPECT_EQ(refused.out, "");
      EXPECT_TRUE(refused.err.starts_with("Usage : tavrolloctl " + verb + " SOURCE SAUVEGARDE "));
    }
    const Outcome help = runTavrolloctl({verb, "--help"});
    EXPECT_EQ(help.status, 0);
    EXPECT_TRUE(help.out.starts_with("Usage : tavrolloctl " + verb + " SOURCE SAUVEGARDE "));
  }
}

}  // namespace
