// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/un.h>

#include "config/CookieStoreSearch.h"
#include "support/Processes.h"
#include "text/Utf.h"

// What a search meets on a file system with links, pipes, rights and names of any bytes.

namespace {

using Names = std::vector<std::string>;

struct Report {
  Names visited;
  Names found;
};

Report run(const Scratch& scratch, const Text& pattern = u"cookies.sqlite") {
  Report result;
  const std::size_t cut = scratch.path().size();
  CookieStoreSearch search;
  search.folder = scratch.text();
  search.pattern = pattern;
  search.folderVisited = [&](const Text& path) {
    result.visited.push_back(toUtf8Lossless(path).substr(cut));
    return true;
  };
  search.found = [&](const Text& path) {
    result.found.push_back(toUtf8Lossless(path).substr(cut));
  };
  const SearchOutcome outcome = searchCookieStores(search);
  EXPECT_EQ(outcome.end, SearchEnd::Done);
  EXPECT_EQ(static_cast<std::size_t>(outcome.found), result.found.size());
  return result;
}

void link(const Scratch& scratch, const std::string& target, std::string_view name) {
  std::filesystem::create_symlink(target, scratch.path(name));
}

}  // namespace

TEST(CookieStoreSearchLinks, AFolderBehindALinkIsVisited) {
  const Scratch scratch;
  const Scratch elsewhere;
  elsewhere.write("profile/cookies.sqlite", "");
  link(scratch, elsewhere.path(), "firefox");
  EXPECT_EQ(run(scratch).found, Names{"/firefox/profile/cookies.sqlite"});
}

TEST(CookieStoreSearchLinks, EachRealFolderIsVisitedOnce) {
  const Scratch scratch;
  scratch.write("firefox/b/cookies.sqlite", "");
  link(scratch, "b", "firefox/a");
  link(scratch, "a", "firefox/c");
  link(scratch, "firefox", "z");
  const Report result = run(scratch);
  EXPECT_EQ(result.visited, (Names{"/", "/firefox/", "/firefox/a/"}));
  EXPECT_EQ(result.found, Names{"/firefox/a/cookies.sqlite"});
}

TEST(CookieStoreSearchLinks, LoopsEnd) {
  const Scratch scratch;
  scratch.write("firefox/cookies.sqlite", "");
  link(scratch, ".", "firefox/self");
  link(scratch, "..", "firefox/up");
  link(scratch, "round", "firefox/round");
  const Report result = run(scratch);
  EXPECT_EQ(result.visited, (Names{"/", "/firefox/"}));
  EXPECT_EQ(result.found, Names{"/firefox/cookies.sqlite"});
}

TEST(CookieStoreSearchLinks, AStartFolderMayBeALink) {
  const Scratch scratch;
  scratch.write("real/cookies.sqlite", "");
  link(scratch, "../real", "real/loop");
  link(scratch, "real", "firefox");
  CookieStoreSearch search;
  search.folder = scratch.text("firefox");
  search.pattern = u"*.sqlite";
  search.folderVisited = [](const Text&) { return true; };
  std::vector<Text> found;
  search.found = [&](const Text& path) { found.push_back(path); };
  EXPECT_EQ(searchCookieStores(search), (SearchOutcome{SearchEnd::Done, 1}));
  EXPECT_EQ(found, std::vector<Text>{scratch.text("firefox/cookies.sqlite")});
}

TEST(CookieStoreSearchLinks, OnlyFilesAndLinksToFilesAreResults) {
  const Scratch scratch;
  scratch.write("target", "");
  scratch.makeFolders("firefox");
  link(scratch, "../target", "firefox/1.sqlite");
  link(scratch, "nowhere", "firefox/2.sqlite");
  link(scratch, "/dev/null", "firefox/3.sqlite");
  ASSERT_EQ(::mkfifo(scratch.path("firefox/4.sqlite").c_str(), 0600), 0);
  link(scratch, "4.sqlite", "firefox/5.sqlite");
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  scratch.path("firefox/6.sqlite").copy(address.sun_path, sizeof address.sun_path - 1);
  const int socket = ::socket(AF_UNIX, SOCK_STREAM, 0);
  ASSERT_EQ(::bind(socket, reinterpret_cast<sockaddr*>(&address), sizeof address), 0);
  EXPECT_EQ(run(scratch, u"*.sqlite").found, Names{"/firefox/1.sqlite"});
  ::close(socket);
}

TEST(CookieStoreSearchLinks, NamesOfAnyBytesSurvive) {
  const Scratch scratch;
  const std::string name = "firefox/\xFF\xC3\xA9\xE9/cookies\x80.sqlite";
  scratch.write(name, "");
  EXPECT_EQ(run(scratch, u"cookies?.sqlite").found, Names{"/" + name});
}

TEST(CookieStoreSearchLinks, AFolderThatCannotBeReadIsPassedOver) {
  const Scratch scratch;
  scratch.write("firefox/b/cookies.sqlite", "");
  scratch.write("firefox/closed/cookies.sqlite", "");
  ::chmod(scratch.path().c_str(), 0755);
  ::chmod(scratch.path("firefox/closed").c_str(), 0);
  const int status = inChildWithoutRights([&] {
    const Report result = run(scratch);
    const bool right =
        result.visited == Names{"/", "/firefox/", "/firefox/b/", "/firefox/closed/"} &&
        result.found == Names{"/firefox/b/cookies.sqlite"};
    return right ? 0 : 1;
  });
  ::chmod(scratch.path("firefox/closed").c_str(), 0755);
  EXPECT_EQ(status, 0);
}
