// SPDX-License-Identifier: GPL-3.0-or-later
#include "config/CookieStoreSearch.h"

#include <gtest/gtest.h>

#include "support/Scratch.h"
#include "text/CaseFold.h"
#include "text/Utf.h"

namespace {

// A path with slashes on every system.
std::string plain(const Text& path) { return toUtf8Lossless(withSeparator(path, u'/')); }

// One search below a folder, with what it told. Paths are told without the folder's own.
struct Report {
  std::vector<std::string> visited;
  std::vector<std::string> found;
  std::vector<std::string> order;  // of both
  SearchOutcome outcome;
};

Report run(const Text& folder, const Text& pattern = u"cookies.sqlite",
           std::size_t mostFolders = 1000) {
  Report result;
  const std::string begin = plain(folder);
  const auto cut = [&](const Text& path) {
    const std::string bytes = plain(path);
    return bytes.starts_with(begin) ? bytes.substr(begin.size()) : "outside: " + bytes;
  };
  CookieStoreSearch search;
  search.folder = folder;
  search.pattern = pattern;
  search.folderVisited = [&](const Text& path) {
    result.visited.push_back(cut(path));
    result.order.push_back("visit " + cut(path));
    return result.visited.size() <= mostFolders;
  };
  search.found = [&](const Text& path) {
    result.found.push_back(cut(path));
    result.order.push_back("found " + cut(path));
  };
  result.outcome = searchCookieStores(search);
  return result;
}

using Names = std::vector<std::string>;

SearchOutcome done(int found) { return {SearchEnd::Done, found}; }

}  // namespace

TEST(CookieStoreSearch, GoesBreadthFirstAndTellsEachFolderBeforeItsResults) {
  const Scratch scratch;
  scratch.write("firefox/b/cookies.sqlite", "");
  scratch.write("firefox/a/deep/cookies.sqlite", "");
  scratch.write("firefox/a/cookies.sqlite", "");
  scratch.write("firefox/cookies.sqlite", "");
  const Report result = run(scratch.text("firefox"));
  EXPECT_EQ(result.order, (Names{"visit /", "found /cookies.sqlite", "visit /a/",
                                 "found /a/cookies.sqlite", "visit /b/", "found /b/cookies.sqlite",
                                 "visit /a/deep/", "found /a/deep/cookies.sqlite"}));
  EXPECT_EQ(result.outcome, done(4));
}

TEST(CookieStoreSearch, AStartFolderThatDoesNotExistIsTold) {
  const Scratch scratch;
  scratch.write("firefox/cookies.sqlite", "");
  for (const Text& folder :
       {Text(), scratch.text("missing"), scratch.text("firefox/cookies.sqlite")}) {
    const Report result = run(folder);
    EXPECT_EQ(result.outcome, (SearchOutcome{SearchEnd::NoStartFolder, 0}));
    EXPECT_TRUE(result.order.empty());
  }
}

TEST(CookieStoreSearch, ATrailingSeparatorMakesNoDifference) {
  const Scratch scratch;
  scratch.write("firefox/a/cookies.sqlite", "");
  EXPECT_EQ(run(scratch.text("firefox")).found, Names{"/a/cookies.sqlite"});
  const Report closed = run(scratch.text("firefox") + u"/");
  EXPECT_EQ(closed.found, Names{"a/cookies.sqlite"});
  EXPECT_EQ(closed.visited, (Names{"", "a/"}));
}

TEST(CookieStoreSearch, OnlyPathsThatHoldFirefoxCount) {
  const Scratch scratch;
  scratch.write("chrome/cookies.sqlite", "");
  scratch.write("Mozilla FireFox/x/cookies.sqlite", "");
  scratch.write("fire/fox/cookies.sqlite", "");
  scratch.write("x/firefox-cookies.sqlite", "");
  EXPECT_EQ(run(scratch.text()).found, Names{"/Mozilla FireFox/x/cookies.sqlite"});
  EXPECT_EQ(run(scratch.text(), u"*.sqlite").found,
            (Names{"/x/firefox-cookies.sqlite", "/Mozilla FireFox/x/cookies.sqlite"}));
}

TEST(CookieStoreSearch, TheStartFoldersOwnNameCountsToo) {
  const Scratch scratch;
  scratch.write("FIREFOX/a/cookies.sqlite", "");
  EXPECT_EQ(run(scratch.text("FIREFOX")).outcome, done(1));
}

TEST(CookieStoreSearch, NamesFitThePatternInCapitalsAndSmallLetters) {
  const Scratch scratch;
  for (const char* name : {"Cookies.SQLite", "cookies.sqlite-wal", "xcookies.sqlite", "readme"}) {
    scratch.write(std::string("firefox/") + name, "");
  }
  EXPECT_EQ(run(scratch.text("firefox")).found, Names{"/Cookies.SQLite"});
  EXPECT_EQ(run(scratch.text("firefox"), u"COOKIES.*").found,
            (Names{"/Cookies.SQLite", "/cookies.sqlite-wal"}));
  EXPECT_EQ(run(scratch.text("firefox"), u"").outcome, done(4));
  EXPECT_EQ(run(scratch.text("firefox"), u"*.*").outcome, done(4));
  EXPECT_EQ(run(scratch.text("firefox"), u"rea?me").found, Names{"/readme"});
  EXPECT_EQ(run(scratch.text("firefox"), u"absent").outcome, done(0));
}

TEST(CookieStoreSearch, HiddenFoldersAreVisitedAndHiddenFilesAreNoResults) {
  const Scratch scratch;
  scratch.write(".mozilla/firefox/cookies.sqlite", "");
  scratch.write(".mozilla/firefox/.cookies.sqlite", "");
  scratch.write(".mozilla/firefox/..cookies.sqlite", "");
  EXPECT_EQ(run(scratch.text(), u"*cookies.sqlite").found,
            Names{"/.mozilla/firefox/cookies.sqlite"});
}

TEST(CookieStoreSearch, AFolderThatFitsIsVisitedAndNoResult) {
  const Scratch scratch;
  scratch.write("firefox/cookies.sqlite/cookies.sqlite", "");
  const Report result = run(scratch.text("firefox"));
  EXPECT_EQ(result.visited, (Names{"/", "/cookies.sqlite/"}));
  EXPECT_EQ(result.found, Names{"/cookies.sqlite/cookies.sqlite"});
}

TEST(CookieStoreSearch, AFoldersResultsAndSubfoldersAreSortedByName) {
  const Scratch scratch;
  for (const char* name : {"d", "b", "é", "a", "C"}) {
    scratch.write(std::string("firefox/") + name + "/x", "");
    scratch.write(std::string("firefox/") + name + ".sqlite", "");
  }
  const Report result = run(scratch.text("firefox"), u"*.sqlite");
  EXPECT_EQ(result.visited, (Names{"/", "/C/", "/a/", "/b/", "/d/", "/é/"}));
  EXPECT_EQ(result.found, (Names{"/C.sqlite", "/a.sqlite", "/b.sqlite", "/d.sqlite", "/é.sqlite"}));
}

TEST(CookieStoreSearch, StopsWhenItIsToldTo) {
  const Scratch scratch;
  scratch.write("firefox/cookies.sqlite", "");
  scratch.write("firefox/a/cookies.sqlite", "");
  scratch.write("firefox/b/cookies.sqlite", "");
  const Report result = run(scratch.text("firefox"), u"cookies.sqlite", 2);
  EXPECT_EQ(result.order, (Names{"visit /", "found /cookies.sqlite", "visit /a/",
                                 "found /a/cookies.sqlite", "visit /b/"}));
  EXPECT_EQ(result.outcome, (SearchOutcome{SearchEnd::Stopped, 2}));
}

TEST(CookieStoreSearch, TellsWhenAFolderJoinsAndLeavesTheQueue) {
  const Scratch scratch;
  scratch.write("firefox/a/cookies.sqlite", "");
  scratch.makeFolders("firefox/b");
  Names order;
  const auto note = [&](const char* what) {
    return [&order, what, cut = scratch.path("firefox").size()](const Text& path) {
      order.push_back(what + plain(path).substr(cut));
      return true;
    };
  };
  CookieStoreSearch search;
  search.folder = scratch.text("firefox");
  search.pattern = u"cookies.sqlite";
  search.folderQueued = note("queued ");
  search.folderVisited = note("visit ");
  search.folderDone = note("done ");
  search.found = note("found ");
  EXPECT_EQ(searchCookieStores(search), done(1));
  EXPECT_EQ(order, (Names{"queued /", "visit /", "queued /a/", "queued /b/", "done /", "visit /a/",
                          "found /a/cookies.sqlite", "done /a/", "visit /b/", "done /b/"}));
}

TEST(CookieStoreSearch, NothingIsToldAfterAStop) {
  const Scratch scratch;
  scratch.write("firefox/cookies.sqlite", "");
  Names order;
  const auto note = [&](const char* what) {
    return [&order, what](const Text&) { order.push_back(what); };
  };
  CookieStoreSearch search;
  search.folder = scratch.text("firefox");
  search.pattern = u"cookies.sqlite";
  search.folderQueued = note("queued");
  search.folderVisited = [](const Text&) { return false; };
  search.folderDone = note("done");
  search.found = note("found");
  EXPECT_EQ(searchCookieStores(search), (SearchOutcome{SearchEnd::Stopped, 0}));
  EXPECT_EQ(order, Names{"queued"});
}

TEST(CookieStoreSearch, AFolderThatVanishesMeanwhileIsPassedOver) {
  const Scratch scratch;
  scratch.write("firefox/a/cookies.sqlite", "");
  scratch.write("firefox/b/cookies.sqlite", "");
  CookieStoreSearch search;
  search.folder = scratch.text("firefox");
  search.pattern = u"cookies.sqlite";
  search.folderVisited = [&](const Text& path) {
    if (path.ends_with(nativePath(u"/a/"))) std::filesystem::remove_all(toPath(path));
    return true;
  };
  std::vector<Text> found;
  search.found = [&](const Text& path) { found.push_back(path); };
  EXPECT_EQ(searchCookieStores(search), done(1));
  EXPECT_EQ(found, std::vector<Text>{scratch.text("firefox/b/cookies.sqlite")});
}

#ifndef TAVROLLO_WITHOUT_POSIX  // the library's paths end at 260 characters there
TEST(CookieStoreSearch, ADeepTreeIsWalkedToItsEnd) {
  const Scratch scratch;
  std::string deep = "firefox";
  for (int i = 0; i < 200; ++i) deep += "/d";
  scratch.write(deep + "/cookies.sqlite", "");
  const Report result = run(scratch.text("firefox"));
  EXPECT_EQ(result.visited.size(), 201u);
  EXPECT_EQ(result.outcome, done(1));
}
#endif
