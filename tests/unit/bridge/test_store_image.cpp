// SPDX-License-Identifier: GPL-3.0-or-later
#include "bridge/StoreImage.h"

#include <gtest/gtest.h>

#include "unit/bridge/BrowserStore.h"
#include "unit/bridge/LogBytes.h"

namespace {

constexpr std::uint32_t kPage = 512;

std::string page(char c) { return std::string(kPage, c); }

// A database of pages: the header's, then one filled with each letter.
std::string databaseOf(std::string_view letters) {
  std::string bytes = sqliteHeader(kPage);
  bytes.resize(kPage, 'H');
  for (const char letter : letters) bytes += page(letter);
  return bytes;
}

std::string all(const StoreImage& image) {
  std::string bytes(static_cast<std::size_t>(image.size()), '\0');
  EXPECT_FALSE(image.read(0, {bytes.data(), bytes.size()}));
  return bytes;
}

class StoreImageTest : public testing::Test {
 protected:
  Text write(std::string_view store) { return folder_.write(u"store", store); }
  Text write(std::string_view store, std::string_view log) {
    folder_.write(u"store-wal", log);
    return write(store);
  }

  StoreFolder folder_;
};

}  // namespace

TEST_F(StoreImageTest, AFileThatIsNoDatabaseIsItsOwnImage) {
  for (const std::string& bytes : {std::string(), std::string("x"), std::string(100'000, 'a'),
                                   std::string("SQLite format 3\0", 16)}) {
    StoreImage image;
    // A log means nothing to it.
    ASSERT_FALSE(image.open(write(bytes, LogBytes(kPage, 1).frame(1, page('z'), 1).bytes())));
    EXPECT_FALSE(image.isSqlite());
    EXPECT_EQ(image.pageSize(), 0u);
    EXPECT_EQ(all(image), bytes);
    EXPECT_TRUE(image.unchanged());
  }
}

TEST_F(StoreImageTest, TheHeaderAloneDecidesThatItIsADatabase) {
  const auto with = [](std::size_t at, std::string_view bytes) {
    std::string header = sqliteHeader(kPage);
    return header.replace(at, bytes.size(), bytes);
  };
  const struct {
    std::string bytes;
    std::uint32_t pageSize;
  } rows[] = {
      {sqliteHeader(512), 512},
      {sqliteHeader(4096), 4096},
      {sqliteHeader(32768), 32768},
      {sqliteHeader(65536), 65536},
      {sqliteHeader(512) + "whatever follows it", 512},
      {sqliteHeader(512).substr(0, 99), 0},
      {sqliteHeader(256), 0},
      {sqliteHeader(768), 0},
      {with(16, std::string_view("\0\0", 2)), 0},
      {with(16, std::string_view("\0\2", 2)), 0},
      {with(0, "sQLite"), 0},
      {with(15, " "), 0},
      {with(21, "\x41"), 0},
      {with(22, "\x21"), 0},
      {with(23, "\x21"), 0},
      {with(18, "\x09\x09"), 512},
  };
  for (const auto& row : rows) {
    StoreImage image;
    ASSERT_FALSE(image.open(write(row.bytes)));
    EXPECT_EQ(image.pageSize(), row.pageSize);
    EXPECT_EQ(image.isSqlite(), row.pageSize != 0);
  }
}

TEST_F(StoreImageTest, TheLogsPagesLieOverTheStores) {
  StoreImage image;
  ASSERT_FALSE(
      image.open(write(databaseOf("abc"),
                       LogBytes(kPage, 1).frame(3, page('X'), 4).frame(5, page('Y'), 5).bytes())));
  EXPECT_EQ(image.size(), 5 * kPage);
  EXPECT_EQ(all(image), databaseOf("aXcY"));
  EXPECT_TRUE(image.unchanged());

  std::string across(3, '\0');
  EXPECT_FALSE(image.read(2 * kPage - 1, {across.data(), across.size()}));
  EXPECT_EQ(across, "aXX");
  std::string three(kPage + 2, '\0');
  EXPECT_FALSE(image.read(2 * kPage - 1, {three.data(), three.size()}));
  EXPECT_EQ(three, "a" + page('X') + "c");
}

TEST_F(StoreImageTest, ALogThatShrankTheDatabaseEndsIt) {
  StoreImage image;
  ASSERT_FALSE(
      image.open(write(databaseOf("abc"), LogBytes(kPage, 1).frame(2, page('X'), 2).bytes())));
  EXPECT_EQ(all(image), databaseOf("X"));
}

TEST_F(StoreImageTest, ReadingPastTheEndIsAFailure) {
  for (const bool withLog : {false, true}) {
    StoreImage image;
    const std::string log = LogBytes(kPage, 1).frame(2, page('X'), 2).bytes();
    ASSERT_FALSE(image.open(write(databaseOf("a"), withLog ? log : std::string())));
    char bytes[2] = {};
    EXPECT_FALSE(image.read(2 * kPage - 1, std::span(bytes, 1)));
    EXPECT_FALSE(image.read(2 * kPage, std::span(bytes, 0)));
    EXPECT_EQ(image.read(2 * kPage - 1, bytes), failures::pastEndOfFile());
    EXPECT_EQ(image.read(2 * kPage, std::span(bytes, 1)), failures::pastEndOfFile());
    EXPECT_EQ(image.read(UINT64_MAX, std::span(bytes, 1)), failures::pastEndOfFile());
  }
}

TEST_F(StoreImageTest, APageThatNeitherFileHoldsIsAFailure) {
  StoreImage image;
  ASSERT_FALSE(
      image.open(write(databaseOf("a"), LogBytes(kPage, 1).frame(1, page('X'), 9).bytes())));
  char byte = 0;
  EXPECT_EQ(image.read(5 * kPage, {&byte, 1}), failures::pastEndOfFile());
}

TEST_F(StoreImageTest, ALogThatSaysNothingLeavesTheStoreAsItIs) {
  const std::string otherSize = LogBytes(1024, 1).frame(2, std::string(1024, 'X'), 2).bytes();
  for (const std::string& log : {std::string(), std::string("junk"), otherSize,
                                 LogBytes(kPage, 1).frame(2, page('X'), 0).bytes()}) {
    StoreImage image;
    ASSERT_FALSE(image.open(write(databaseOf("ab"), log)));
    EXPECT_EQ(all(image), databaseOf("ab"));
    EXPECT_TRUE(image.unchanged());
  }
}

TEST_F(StoreImageTest, AMissingStoreIsAFailureWithOrWithoutALog) {
  StoreImage image;
  EXPECT_EQ(image.open(folder_ / u"store").number, 53);
  EXPECT_TRUE(image.unchanged());
  folder_.write(u"store-wal", LogBytes(kPage, 1).frame(1, page('X'), 1).bytes());
  EXPECT_EQ(image.open(folder_ / u"store").number, 53);
  EXPECT_EQ(image.open(folder_.text()).number, 75);
}

TEST_F(StoreImageTest, ALogThatCannotBeReadHidesCommandsAndIsAFailure) {
  const Text path = write(databaseOf("a"));
  std::filesystem::create_directory(toPath(folder_ / u"store-wal"));
  StoreImage image;
  EXPECT_TRUE(image.open(path));
}

TEST_F(StoreImageTest, EveryChangeOfStoreOrLogShows) {
  const std::string log = LogBytes(kPage, 1).frame(2, page('X'), 3).bytes();
  const std::string longer =
      LogBytes(kPage, 1).frame(2, page('X'), 3).frame(3, page('Y'), 3).bytes();
  const std::function<void()> changes[] = {
      [&] { folder_.write(u"store", databaseOf("abc")); },
      [&] { folder_.write(u"store", databaseOf("a")); },
      [&] { folder_.write(u"store-wal", longer); },
      [&] { folder_.write(u"store-wal", ""); },
      [&] { removeFile(folder_ / u"store-wal"); },
      [&] { removeFile(folder_ / u"store"); },
      [&] {
        std::filesystem::rename(toPath(folder_.write(u"new", databaseOf("ab"))),
                                toPath(folder_ / u"store"));
      },
      [&] { age(folder_ / u"store"); },
      [&] { age(folder_ / u"store-wal"); },
  };
  for (const auto& change : changes) {
    StoreImage image;
    ASSERT_FALSE(image.open(write(databaseOf("ab"), log)));
    ASSERT_TRUE(image.unchanged());
    change();
    EXPECT_FALSE(image.unchanged());
  }
}

TEST_F(StoreImageTest, OpeningAgainForgetsWhatWas) {
  StoreImage image;
  ASSERT_FALSE(
      image.open(write(databaseOf("ab"), LogBytes(kPage, 1).frame(2, page('X'), 3).bytes())));
  ASSERT_FALSE(image.open(folder_.write(u"other", "plain")));
  EXPECT_FALSE(image.isSqlite());
  EXPECT_EQ(all(image), "plain");
  EXPECT_TRUE(image.unchanged());
}

TEST_F(StoreImageTest, IsWhatSqliteItselfWouldCopyOut) {
  FirefoxStore store(folder_ / u"cookies.sqlite", 4096);
  store.setOthers(400);
  store.database().run("DELETE FROM moz_cookies WHERE id % 3 = 0");
  store.setCommand("notepad_|_a_|_");
  ASSERT_GT(std::filesystem::file_size(toPath(folder_ / u"cookies.sqlite-wal")), 0u);

  StoreImage image;
  ASSERT_FALSE(image.open(store.path()));
  const std::string overlaid = all(image);
  store.database().run("PRAGMA wal_checkpoint(TRUNCATE)");
  EXPECT_FALSE(image.unchanged());
  ASSERT_FALSE(image.open(store.path()));
  EXPECT_EQ(image.log().pageCount(), 0u);
  EXPECT_TRUE(all(image) == overlaid);
  EXPECT_TRUE(bytesIn(store.path()) == overlaid);
}

TEST_F(StoreImageTest, TheStampIsOneQueryForEachFile) {
  EXPECT_EQ(storeStamp(folder_ / u"store"), StoreStamp{});
  const Text path = write("store", "log");
  const StoreStamp stamp = storeStamp(path);
  ASSERT_TRUE(stamp.store && stamp.log);
  EXPECT_EQ(stamp.store->size, 5u);
  EXPECT_EQ(stamp.log->size, 3u);
  EXPECT_EQ(storeStamp(path), stamp);
}
