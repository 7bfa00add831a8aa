// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include "platform/ProgramFolder.h"
#include "setup/FolderUpdate.h"
#include "setup/InstalledFiles.h"
#include "support/Processes.h"
#ifndef TAVROLLO_WITHOUT_POSIX
#include "support/Mounted.h"
#endif

namespace {

namespace fs = std::filesystem;

using Paths = std::vector<Text>;

// A program folder that was filled from the first version of a template and updated once, so that
// everything in it is noted.
class FolderUpdateTest : public ::testing::Test {
 protected:
  FolderUpdateTest() {
    scratch.write("template/nav/index.html", "page 1");
    scratch.write("template/nav/res_css/js/a.js", "script 1", 0444);
    scratch.write("template/nav/user_datas/exemple.txt", "example 1");
    scratch.write("template/nav/res_css/js/rwCookies.js", "var ps=\"\";\r\nrest 1\r\n");
    scratch.write("template/readme.txt", "read me 1");
    EXPECT_FALSE(fillProgramFolder(folder(), templates()));
    const FolderUpdate first = update();
    EXPECT_TRUE(first.arrived.empty() && first.replaced.empty() && first.kept.empty());
    EXPECT_TRUE(first.notDone.empty());
  }

  Text folder() const { return scratch.text("home"); }
  Text templates() const { return scratch.text("template"); }
  FolderUpdate update() const { return updateProgramFolder(folder(), templates()); }
  std::string home(const std::string& name) const { return scratch.read("home/" + name); }

  Scratch scratch;
};

TEST_F(FolderUpdateTest, WhatWasInstalledIsNoted) {
  const InstalledFiles noted = parseInstalledFiles(home("fichiers_installes.txt"));
  EXPECT_EQ(noted.size(), 5u);
  // sha256sum of "page 1"
  EXPECT_EQ(noted.at("nav/index.html"),
            "0621a1c111cfd4554a172d9ecd490a9a8d6e4e66e0f444491b716fb1d00ab1b9");
}

TEST_F(FolderUpdateTest, NothingNewTouchesNothing) {
  const auto note = fs::last_write_time(scratch.path("home/fichiers_installes.txt"));
  scratch.write("home/nav/index.html", "the user's");
  fs::remove(scratch.path("home/readme.txt"));
  const FolderUpdate done = update();
  EXPECT_TRUE(updateLines(done).empty());
  EXPECT_EQ(home("nav/index.html"), "the user's");
  EXPECT_FALSE(fs::exists(scratch.path("home/readme.txt")));
  EXPECT_EQ(fs::last_write_time(scratch.path("home/fichiers_installes.txt")), note);
}

TEST_F(FolderUpdateTest, AFileThatIsAsItWasInstalledIsReplaced) {
  scratch.write("template/nav/index.html", "page 2");
  EXPECT_EQ(update().replaced, Paths{u"nav/index.html"});
  EXPECT_EQ(home("nav/index.html"), "page 2");
  scratch.write("template/nav/index.html", "page 3");
  EXPECT_EQ(update().replaced, Paths{u"nav/index.html"});
  EXPECT_EQ(home("nav/index.html"), "page 3");
  EXPECT_TRUE(update().replaced.empty());
}

TEST_F(FolderUpdateTest, AFileThatTheUserChangedStays) {
  scratch.write("home/nav/index.html", "the user's");
  scratch.write("template/nav/index.html", "page 2");
  EXPECT_EQ(update().kept, Paths{u"nav/index.html"});
  EXPECT_EQ(home("nav/index.html"), "the user's");
  EXPECT_EQ(update().kept, Paths{u"nav/index.html"});
  EXPECT_EQ(home("nav/index.html"), "the user's");
}

TEST_F(FolderUpdateTest, AChangeThatTheUserTookBackIsNone) {
  scratch.write("home/nav/index.html", "the user's");
  scratch.write("template/nav/index.html", "page 2");
  update();
  scratch.write("home/nav/index.html", "page 1");
  EXPECT_EQ(update().replaced, Paths{u"nav/index.html"});
  EXPECT_EQ(home("nav/index.html"), "page 2");
}

TEST_F(FolderUpdateTest, AFileThatTheUserDeletedStaysAway) {
  fs::remove(scratch.path("home/nav/user_datas/exemple.txt"));
  scratch.write("template/nav/user_datas/exemple.txt", "example 2");
  const FolderUpdate done = update();
  EXPECT_TRUE(done.arrived.empty() && done.kept.empty());
  EXPECT_FALSE(fs::exists(scratch.path("home/nav/user_datas/exemple.txt")));
  update();
  EXPECT_FALSE(fs::exists(scratch.path("home/nav/user_datas/exemple.txt")));
}

TEST_F(FolderUpdateTest, ANewFileArrivesInANewFolderToo) {
  scratch.write("template/nav/new/deep/b.js", "script b");
  scratch.write("template/nav/sch\xc3\xa9ma.svg", "drawing");
  EXPECT_EQ(update().arrived, (Paths{u"nav/new/deep/b.js", u"nav/schéma.svg"}));
  EXPECT_EQ(home("nav/new/deep/b.js"), "script b");
  EXPECT_EQ(home("nav/sch\xc3\xa9ma.svg"), "drawing");
  EXPECT_TRUE(update().arrived.empty());
}

TEST_F(FolderUpdateTest, AFileOfTheUsersWithTheNameOfANewOneStays) {
  scratch.write("home/nav/new.html", "the user's");
  scratch.write("template/nav/new.html", "new 1");
  EXPECT_EQ(update().kept, Paths{u"nav/new.html"});
  scratch.write("template/nav/new.html", "new 2");
  EXPECT_EQ(update().kept, Paths{u"nav/new.html"});
  EXPECT_EQ(home("nav/new.html"), "the user's");
}

TEST_F(FolderUpdateTest, WhatTheTemplateHasNoLongerStays) {
  fs::remove(scratch.path("template/nav/user_datas/exemple.txt"));
  EXPECT_TRUE(updateLines(update()).empty());
  EXPECT_EQ(home("nav/user_datas/exemple.txt"), "example 1");
}

#ifndef TAVROLLO_WITHOUT_POSIX  // it makes a link
TEST_F(FolderUpdateTest, ALinkOfTheUsersStaysAndItsTargetToo) {
  scratch.write("elsewhere.html", "page 1");
  fs::remove(scratch.path("home/nav/index.html"));
  fs::create_symlink(scratch.path("elsewhere.html"), scratch.path("home/nav/index.html"));
  scratch.write("template/nav/index.html", "page 2");
  EXPECT_EQ(update().kept, Paths{u"nav/index.html"});
  EXPECT_EQ(scratch.read("elsewhere.html"), "page 1");
  EXPECT_TRUE(fs::is_symlink(scratch.path("home/nav/index.html")));
}
#endif

// Its first line is rewritten whenever the page gives another key.
TEST_F(FolderUpdateTest, TheKeyOfThePageStaysAndTheRestIsReplaced) {
  scratch.write("home/nav/res_css/js/rwCookies.js", "var ps=\"secret\";\r\nrest 1\r\n");
  scratch.write("template/nav/res_css/js/rwCookies.js", "var ps=\"\";\r\nrest 2\r\n");
  EXPECT_EQ(update().replaced, Paths{u"nav/res_css/js/rwCookies.js"});
  EXPECT_EQ(home("nav/res_css/js/rwCookies.js"), "var ps=\"secret\";\r\nrest 2\r\n");
}

TEST_F(FolderUpdateTest, AChangedScriptOfTheKeyStays) {
  scratch.write("template/nav/res_css/js/rwCookies.js", "var ps=\"\";\r\nrest 2\r\n");
  for (const std::string& changed : {std::string("var ps=\"\";\r\nmine\r\n"),
                                     std::string("var ps=\"secret\";"), std::string()}) {
    scratch.write("home/nav/res_css/js/rwCookies.js", changed);
    EXPECT_EQ(update().kept, Paths{u"nav/res_css/js/rwCookies.js"});
    EXPECT_EQ(home("nav/res_css/js/rwCookies.js"), changed);
  }
}

TEST_F(FolderUpdateTest, WithoutANoteWhatDiffersStaysAndWhatIsMissingArrives) {
  fs::remove(scratch.path("home/fichiers_installes.txt"));
  scratch.write("template/nav/index.html", "page 2");
  fs::remove(scratch.path("home/readme.txt"));
  const FolderUpdate done = update();
  EXPECT_EQ(done.kept, Paths{u"nav/index.html"});
  EXPECT_EQ(done.arrived, Paths{u"readme.txt"});
  EXPECT_EQ(home("nav/index.html"), "page 1");
  // What was equal is noted again.
  fs::permissions(scratch.path("template/nav/res_css/js/a.js"), fs::perms::owner_write,
                  fs::perm_options::add);
  scratch.write("template/nav/res_css/js/a.js", "script 2");
  EXPECT_EQ(update().replaced, Paths{u"nav/res_css/js/a.js"});
}

// The note was not written any more: what was put there is known by its content.
TEST_F(FolderUpdateTest, AnInterruptedUpdateIsFinished) {
  scratch.write("template/nav/index.html", "page 2");
  scratch.write("template/nav/new.html", "new 1");
  scratch.write("home/nav/index.html", "page 2");
  scratch.write("home/nav/new.html", "new 1");
  EXPECT_TRUE(updateLines(update()).empty());
  scratch.write("template/nav/index.html", "page 3");
  scratch.write("template/nav/new.html", "new 2");
  EXPECT_EQ(update().replaced, (Paths{u"nav/index.html", u"nav/new.html"}));
}

TEST_F(FolderUpdateTest, PagesThatWereRemovedAltogetherComeBackWithTheirNote) {
  fs::remove_all(scratch.path("home/nav"));
  scratch.write("template/nav/index.html", "page 2");
  ASSERT_FALSE(fillProgramFolder(folder(), templates()));
  EXPECT_TRUE(updateLines(update()).empty());
  scratch.write("template/nav/index.html", "page 3");
  EXPECT_EQ(update().replaced, Paths{u"nav/index.html"});
}

TEST_F(FolderUpdateTest, AFileInTheWayOfAFolderIsAFailureAndTheRestIsDone) {
  scratch.write("home/nav/new", "the user's");
  scratch.write("template/nav/new/b.js", "script b");
  scratch.write("template/readme.txt", "read me 2");
  const FolderUpdate done = update();
  ASSERT_EQ(done.notDone.size(), 1u);
  EXPECT_EQ(done.notDone[0].path, u"nav/new/b.js");
  EXPECT_EQ(done.replaced, Paths{u"readme.txt"});
  EXPECT_EQ(home("nav/new"), "the user's");
}

TEST_F(FolderUpdateTest, AFolderInTheWayOfAFileIsKept) {
  scratch.makeFolders("home/nav/new.html");
  scratch.write("template/nav/new.html", "new");
  EXPECT_EQ(update().kept, Paths{u"nav/new.html"});
  EXPECT_TRUE(fs::is_directory(scratch.path("home/nav/new.html")));
}

#ifndef TAVROLLO_WITHOUT_POSIX  // they close folders and mount a disk
TEST_F(FolderUpdateTest, AFolderThatTakesNoFilesStaysAsItIs) {
  scratch.write("template/nav/index.html", "page 2");
  ::chmod(scratch.path().c_str(), 0755);
  for (const char* name : {"home", "home/nav", "home/nav/res_css", "home/nav/res_css/js"}) {
    ::chmod(scratch.path(name).c_str(), 0555);
  }
  const std::string noteBefore = home("fichiers_installes.txt");
  EXPECT_EQ(inChildWithoutRights([&] {
              const FolderUpdate done = update();
              const bool told = done.notDone.size() == 1 && done.replaced.empty() &&
                                done.notDone[0].path == u"nav/index.html";
              return told ? 0 : 1;
            }),
            0);
  EXPECT_EQ(home("nav/index.html"), "page 1");
  EXPECT_EQ(home("fichiers_installes.txt"), noteBefore);
  for (const char* name : {"home", "home/nav", "home/nav/res_css", "home/nav/res_css/js"}) {
    ::chmod(scratch.path(name).c_str(), 0755);
  }
}

TEST(FolderUpdateOnAFullDisk, LeavesTheOldFileWholeAndNothingBesideIt) {
  const Scratch scratch;
  scratch.write("template/nav/index.html", "page 1");
  scratch.write("template/nav/z.html", "z 1");
  scratch.makeFolders("home");
  const Mounted disk(scratch.path("home"), "size=64k");
  if (!disk) GTEST_SKIP() << kMayNotMount;
  ASSERT_FALSE(fillProgramFolder(scratch.text("home"), scratch.text("template")));
  const auto update = [&] {
    return updateProgramFolder(scratch.text("home"), scratch.text("template"));
  };
  ASSERT_TRUE(update().notDone.empty());

  scratch.write("template/nav/index.html", std::string(100'000, 'x'));
  scratch.write("template/nav/new.html", std::string(100'000, 'y'));
  scratch.write("template/nav/z.html", "z 2");
  const FolderUpdate done = update();
  ASSERT_EQ(done.notDone.size(), 2u);
  EXPECT_EQ(done.notDone[0].path, u"nav/index.html");
  EXPECT_EQ(done.notDone[1].path, u"nav/new.html");
  EXPECT_EQ(done.replaced, Paths{u"nav/z.html"});
  EXPECT_EQ(scratch.read("home/nav/index.html"), "page 1");
  EXPECT_EQ(scratch.namesIn("home/nav").size(), 2u);

  // Once there is room the rest follows.
  scratch.write("template/nav/index.html", "page 2");
  scratch.write("template/nav/new.html", "new");
  const FolderUpdate then = update();
  EXPECT_EQ(then.replaced, Paths{u"nav/index.html"});
  EXPECT_EQ(then.arrived, Paths{u"nav/new.html"});
}
#endif

TEST_F(FolderUpdateTest, WithoutATemplateOrWithoutPagesNothingIsDone) {
  scratch.write("template/nav/index.html", "page 2");
  EXPECT_TRUE(updateLines(updateProgramFolder(folder(), u"")).empty());
  EXPECT_TRUE(updateLines(updateProgramFolder(templates(), templates())).empty());
  EXPECT_FALSE(fs::exists(scratch.path("template/fichiers_installes.txt")));
  scratch.makeFolders("empty");
  EXPECT_TRUE(updateLines(updateProgramFolder(scratch.text("empty"), templates())).empty());
  EXPECT_EQ(scratch.namesIn("empty").size(), 0u);
  EXPECT_EQ(home("nav/index.html"), "page 1");
}

TEST_F(FolderUpdateTest, ATemplateThatCannotBeReadIsAFailure) {
  const FolderUpdate done = updateProgramFolder(folder(), scratch.text("missing"));
  ASSERT_EQ(done.notDone.size(), 1u);
  EXPECT_NE(done.notDone[0].failure.number, 0);
}

TEST(UpdateLines, TellWhatWasDone) {
  const FolderUpdate update{.arrived = {u"a"},
                            .replaced = {u"b", u"c"},
                            .kept = {u"d"},
                            .notDone = {{u"e", {.number = 61, .description = u"Disque plein"}}}};
  EXPECT_EQ(updateLines(update),
            (Paths{u"Dossier du programme : 1 nouveau fichier : a",
                   u"Dossier du programme : 2 fichiers mis à jour : b, c",
                   u"Dossier du programme : 1 fichier que vous avez changé est gardé : d",
                   u"Dossier du programme : e n'a pas pu être mis à jour : Disque plein"}));
  EXPECT_TRUE(updateLines({}).empty());
}

}  // namespace
