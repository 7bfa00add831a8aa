// SPDX-License-Identifier: GPL-3.0-or-later
#include "bridge/CookieStoreReader.h"

#include <gtest/gtest.h>

#include <memory>

#include "text/AnsiCodePage.h"
#include "unit/bridge/BrowserStore.h"
#include "unit/bridge/LogBytes.h"

namespace {

constexpr std::int64_t kMillisecond = 1'000'000;
const std::string kName(kCookieName);

std::string blank(std::size_t size) { return std::string(size, '.'); }

class CookieStoreReaderTest : public testing::Test {
 protected:
  Text path() const { return folder_ / u"store"; }

  void write(std::string_view bytes) { folder_.write(u"store", bytes); }
  void writeLog(std::string_view bytes) { folder_.write(u"store-wal", bytes); }

  // Whether the reader opened and scanned the store for this answer.
  bool scansFor(const Text& file) {
    yields_ = 0;
    reader_.Extract(file);
    return yields_ > 0;
  }

  StoreFolder folder_;
  TraceBuffer trace_;
  int yields_ = 0;
  std::function<void()> onYield_;
  std::int64_t now_ = systemClock();
  CookieStoreReader reader_{trace_,
                            [this] {
                              ++yields_;
                              if (onYield_) onYield_();
                            },
                            [this] { return now_; }};
};

// A store with one command in its file and two newer ones in its log, as bytes.
struct Generations {
  std::string store;
  std::string log;
  std::size_t logWithMiddle = 0;  // the log's size when the middle command was its last
};

Generations threeCommands(const StoreFolder& folder) {
  FirefoxStore store(folder / u"source", 512);
  store.setOthers(12);
  store.setCommand("old");
  store.database().run("PRAGMA wal_checkpoint(TRUNCATE)");
  Generations bytes;
  store.setCommand("middle");
  bytes.logWithMiddle = bytesIn(folder / u"source-wal").size();
  store.setCommand("newest");
  bytes.store = bytesIn(folder / u"source");
  bytes.log = bytesIn(folder / u"source-wal");
  return bytes;
}

const Text kLostLine = u"\r\nerreurJournal des cookies endommagé 57 - i=0";

}  // namespace

TEST_F(CookieStoreReaderTest, GivesTheValueAsByteTextAndKeepsItsPlace) {
  write(blank(500) + kName + "notepad_|_\xC3\xA9\x80_|__e-o-v_");
  EXPECT_EQ(reader_.cookieOffset(), 0);
  EXPECT_EQ(reader_.Extract(path()), u"notepad_|_Ã©€_|_");
  EXPECT_EQ(reader_.cookieOffset(), 501);
  EXPECT_EQ(trace_.text(), u"");
}

TEST_F(CookieStoreReaderTest, SearchesFromTheKnownPlaceOn) {
  write(blank(500) + kName + "first_e-o-v_" + blank(500) + kName + "second_e-o-v_");
  EXPECT_EQ(reader_.Extract(path()), u"first");
  reader_.setCookieOffset(1027);
  EXPECT_EQ(reader_.Extract(path()), u"second");
  EXPECT_EQ(reader_.cookieOffset(), 1027);
  reader_.setCookieOffset(999'999);  // the store was larger once
  EXPECT_EQ(reader_.Extract(path()), u"first");
  EXPECT_EQ(reader_.cookieOffset(), 501);
}

TEST_F(CookieStoreReaderTest, WithoutTheNameTheResultIsEmptyAndTheOffset3) {
  write(blank(1000));
  reader_.setCookieOffset(700);
  EXPECT_EQ(reader_.Extract(path()), u"");
  EXPECT_EQ(reader_.cookieOffset(), 3);
  EXPECT_EQ(trace_.text(), u"");
}

TEST_F(CookieStoreReaderTest, AnErrorIsOneLineAnEmptyResultAndOffset3) {
  const struct {
    std::function<void()> damage;
    Text line;
  } rows[] = {
      {[] {}, u"\r\nerreurFichier introuvable 53 - i=0"},
      {[this] { write("xx" + kName + "cut"); },
       u"\r\nerreurL'entrée dépasse la fin du fichier 62 - i=3"},
      {[this] { std::filesystem::resize_file(toPath(path()), std::uintmax_t{1} << 31); },
       u"\r\nerreurDépassement de capacité 6 - i=0"},
      {[this] {
         removeFile(path());
         std::filesystem::create_directory(toPath(path()));
       },
       u"\r\nerreurErreur d'accès Chemin/Fichier 75 - i=0"},
  };
  Text lines;
  for (const auto& row : rows) {
    row.damage();
    reader_.setCookieOffset(77);
    EXPECT_EQ(reader_.Extract(path()), u"");
    EXPECT_EQ(reader_.cookieOffset(), 3);
    lines += row.line;
    EXPECT_EQ(trace_.text(), lines);
  }
  EXPECT_EQ(reader_.Extract(folder_ / u"none"), u"");
  const Text good = folder_.write(u"good", "xx" + kName + "a_e-o-v_");
  EXPECT_EQ(reader_.Extract(good), u"a");
}

TEST_F(CookieStoreReaderTest, ARefusedHostIsTracedOnce) {
  FirefoxStore store(path(), 1024);
  store.set(kName, "x_e-o-v_", "evil.example");
  EXPECT_EQ(reader_.Extract(path()), u"");
  store.setOthers(3);
  EXPECT_EQ(reader_.Extract(path()), u"");
  store.set(kName, "y_e-o-v_", "evil.example");
  store.set(kName, "x_e-o-v_", "other.example");
  EXPECT_EQ(reader_.Extract(path()), u"");
  store.setCommand("a");
  EXPECT_EQ(reader_.Extract(path()), u"a");
  EXPECT_EQ(trace_.text(),
            u"\r\ncookie refusé, hôte : evil.example\r\ncookie refusé, hôte : other.example");
}

TEST_F(CookieStoreReaderTest, AHostThatIsAllowedLaterIsHeardAtOnce) {
  FirefoxStore store(path(), 1024);
  store.set(kName, "x_e-o-v_", "nav.example");
  now_ += 3600'000 * kMillisecond;
  EXPECT_EQ(reader_.Extract(path()), u"");
  reader_.setAllowedHosts(AllowedHosts("nav.example"));
  EXPECT_EQ(reader_.Extract(path()), u"x");
}

TEST_F(CookieStoreReaderTest, AnEncryptedRowIsAnEmptyValue) {
  ChromiumStore store(path());
  store.set(kName, "", "763130aabb", "localhost");
  EXPECT_EQ(reader_.Extract(path()), u"");
  EXPECT_EQ(trace_.text(), u"");
}

TEST_F(CookieStoreReaderTest, AStoreJustWrittenHasNotSettled) {
  const struct {
    std::int64_t age;  // nanoseconds between the last write and the reading
    bool settled;
  } rows[] = {
      {0, false},
      {49 * kMillisecond, false},
      {50 * kMillisecond, true},
      {3600'000 * kMillisecond, true},
      {-kMillisecond, false},  // written while it was read
      {-5'000 * kMillisecond, false},
      {-3600'000 * kMillisecond, true},  // the clock was set back
  };
  for (const auto& row : rows) {
    write("xx" + kName + "a_e-o-v_");
    now_ = fileStamp(path())->modified + row.age;
    EXPECT_EQ(reader_.Extract(path()), u"a");
    EXPECT_EQ(reader_.sawSettledStore(), row.settled) << row.age;
  }
  // The log's time counts as well.
  write(sqliteHeader(512));
  writeLog("");
  age(path());
  now_ = fileStamp(folder_ / u"store-wal")->modified;
  reader_.Extract(path());
  EXPECT_FALSE(reader_.sawSettledStore());
}

TEST_F(CookieStoreReaderTest, WhileThereIsNoCommandAnUnchangedStoreIsNotScannedAgain) {
  write(blank(1000));
  age(path());
  EXPECT_TRUE(scansFor(path()));
  EXPECT_FALSE(scansFor(path()));
  EXPECT_FALSE(scansFor(path()));
  writeLog("x");
  EXPECT_TRUE(scansFor(path()));
  age(folder_ / u"store-wal");
  EXPECT_TRUE(scansFor(path()));
  EXPECT_FALSE(scansFor(path()));
  reader_.setAllowedHosts({});
  EXPECT_TRUE(scansFor(path()));
  EXPECT_FALSE(scansFor(path()));

  const Text other = folder_.write(u"other", blank(1000));
  age(other);
  EXPECT_TRUE(scansFor(other));
  EXPECT_TRUE(scansFor(path()));
  write("xx" + kName + "a_e-o-v_");
  EXPECT_TRUE(scansFor(path()));
  age(path());
  EXPECT_TRUE(scansFor(path()));
  EXPECT_TRUE(scansFor(path()));  // a command is asked for at each call
}

TEST_F(CookieStoreReaderTest, AYoungStoreIsScannedAgainAlsoWhenItHoldsNoCommand) {
  write(blank(1000));
  now_ = fileStamp(path())->modified + kMillisecond;
  EXPECT_TRUE(scansFor(path()));
  EXPECT_TRUE(scansFor(path()));
  now_ += 100 * kMillisecond;
  EXPECT_TRUE(scansFor(path()));
  EXPECT_FALSE(scansFor(path()));
}

TEST_F(CookieStoreReaderTest, AFailedReadingIsTriedAgain) {
  write("xx" + kName + "cut");
  age(path());
  EXPECT_TRUE(scansFor(path()));
  EXPECT_TRUE(scansFor(path()));
  EXPECT_EQ(trace_.messages().size(), 2u);
}

TEST_F(CookieStoreReaderTest, AStoreThatChangesIsReadThreeTimesAndThenLeftForLater) {
  write(blank(500) + kName + "a_e-o-v_");
  std::size_t size = 1000;
  onYield_ = [&] { write(blank(500) + kName + "a_e-o-v_" + blank(++size)); };
  reader_.setCookieOffset(450);
  EXPECT_EQ(reader_.Extract(path()), u"");
  EXPECT_EQ(yields_, 3);
  EXPECT_FALSE(reader_.sawSettledStore());
  EXPECT_EQ(reader_.cookieOffset(), 450);
  EXPECT_EQ(trace_.text(), u"");
}

TEST_F(CookieStoreReaderTest, AStoreThatChangesOnceIsReadAgainAtOnce) {
  write("xx" + kName + "old_e-o-v_");
  onYield_ = [&] {
    if (yields_ == 1) write("xxxx" + kName + "new_e-o-v_");
  };
  EXPECT_EQ(reader_.Extract(path()), u"new");
  EXPECT_EQ(yields_, 2);
  EXPECT_EQ(reader_.cookieOffset(), 5);
}

TEST_F(CookieStoreReaderTest, ALogThatVanishesOrComesWhileItIsReadMeansReadingAgain) {
  const Generations bytes = threeCommands(folder_);
  write(bytes.store);
  onYield_ = [&] {
    if (yields_ == 1) writeLog(bytes.log);
  };
  EXPECT_EQ(reader_.Extract(path()), u"newest");
}

TEST_F(CookieStoreReaderTest, ACheckpointBetweenTwoReadingsChangesNothing) {
  FirefoxStore store(path(), 1024);
  store.setOthers(40);
  int number = 0;
  for (const std::string mode : {"PASSIVE", "FULL", "RESTART", "TRUNCATE"}) {
    const std::string value = "value" + std::to_string(++number);
    store.setCommand(value);
    EXPECT_EQ(reader_.Extract(path()), fromAnsi(value));
    store.database().run("PRAGMA wal_checkpoint(" + mode + ")");
    EXPECT_EQ(reader_.Extract(path()), fromAnsi(value)) << mode;
    store.setCommand(value + "b");
    EXPECT_EQ(reader_.Extract(path()), fromAnsi(value + "b")) << mode;
  }
  store.database().close();  // the log is gone
  EXPECT_FALSE(std::filesystem::exists(toPath(folder_ / u"store-wal")));
  EXPECT_EQ(reader_.Extract(path()), u"value4b");
  EXPECT_EQ(trace_.text(), u"");
}

TEST_F(CookieStoreReaderTest, ATornLogCountsToItsLastWholeCommitForANewReader) {
  const Generations bytes = threeCommands(folder_);
  write(bytes.store);
  for (std::size_t length = 0; length <= bytes.log.size(); length += length < 64 ? 1 : 13) {
    writeLog(bytes.log.substr(0, length));
    CookieStoreReader reader(trace_, {});
    const Text expected = length >= bytes.log.size()      ? u"newest"
                          : length >= bytes.logWithMiddle ? u"middle"
                                                          : u"old";
    ASSERT_EQ(reader.Extract(path()), expected) << length;
  }
  EXPECT_EQ(trace_.text(), u"");
}

TEST_F(CookieStoreReaderTest, NoOlderCommandComesToLightWhenTheLogLostItsLastCommits) {
  const Generations bytes = threeCommands(folder_);
  write(bytes.store);
  for (std::size_t length = 1; length < bytes.log.size(); length += length < 64 ? 1 : 13) {
    writeLog(bytes.log);
    TraceBuffer trace;
    CookieStoreReader reader(trace, {});
    ASSERT_EQ(reader.Extract(path()), u"newest");
    writeLog(bytes.log.substr(0, length));
    ASSERT_EQ(reader.Extract(path()), u"") << length;
    ASSERT_EQ(trace.text(), kLostLine);
    ASSERT_EQ(reader.cookieOffset(), 3);
    ASSERT_EQ(reader.Extract(path()), u"") << length;  // nor at the next look
    writeLog(bytes.log);
    ASSERT_EQ(reader.Extract(path()), u"newest") << length;
  }
}

TEST_F(CookieStoreReaderTest, AFlippedByteInTheLogNeverBringsAnOlderCommandBack) {
  const Generations bytes = threeCommands(folder_);
  write(bytes.store);
  for (std::size_t at = 0; at < bytes.log.size(); ++at) {
    std::string damaged = bytes.log;
    damaged[at] = static_cast<char>(damaged[at] ^ 0x41);

    writeLog(damaged);
    CookieStoreReader fresh(trace_, {});
    ASSERT_EQ(fresh.Extract(path()), at < bytes.logWithMiddle ? u"old" : u"middle") << at;

    writeLog(bytes.log);
    TraceBuffer trace;
    CookieStoreReader reader(trace, {});
    ASSERT_EQ(reader.Extract(path()), u"newest");
    writeLog(damaged);
    ASSERT_EQ(reader.Extract(path()), u"") << at;
    ASSERT_EQ(trace.text(), kLostLine);
  }
}

TEST_F(CookieStoreReaderTest, AFlippedByteInTheStoreBelowTheLogNeverBringsAnOlderCommandBack) {
  const Generations bytes = threeCommands(folder_);
  writeLog(bytes.log);
  for (std::size_t at = 0; at < bytes.store.size(); ++at) {
    write(bytes.store);
    CookieStoreReader reader(trace_, {});
    ASSERT_EQ(reader.Extract(path()), u"newest");
    std::string damaged = bytes.store;
    damaged[at] = static_cast<char>(damaged[at] ^ 0x41);
    write(damaged);
    const Text value = reader.Extract(path());
    ASSERT_TRUE(value == u"newest" || value == u"") << at << " " << toUtf8(value);
  }
}

TEST_F(CookieStoreReaderTest, AStoreWithoutALogThatLosesItsHeaderIsNotScannedAsItIs) {
  FirefoxStore store(folder_ / u"source");
  store.setCommand("foreign", "evil.example");
  store.database().run("PRAGMA wal_checkpoint(TRUNCATE)");
  const std::string whole = bytesIn(folder_ / u"source");
  for (const std::string& damaged : {"X" + whole.substr(1), whole.substr(0, 99), std::string()}) {
    write(whole);
    EXPECT_EQ(reader_.Extract(path()), u"");
    write(damaged);
    EXPECT_EQ(reader_.Extract(path()), u"");
    EXPECT_TRUE(trace_.text().ends_with(u"\r\nerreurFichier des cookies endommagé 57 - i=0"));
    EXPECT_EQ(reader_.Extract(path()), u"") << "refused once, then taken for a file of its own";
  }
}

TEST_F(CookieStoreReaderTest, AnEmptiedOrRemovedLogMeansThatTheStoreHoldsEverything) {
  const Generations bytes = threeCommands(folder_);
  write(bytes.store);
  writeLog(bytes.log);
  EXPECT_EQ(reader_.Extract(path()), u"newest");
  writeLog("");
  EXPECT_EQ(reader_.Extract(path()), u"old");
  writeLog(bytes.log);
  EXPECT_EQ(reader_.Extract(path()), u"newest");
  removeFile(folder_ / u"store-wal");
  EXPECT_EQ(reader_.Extract(path()), u"old");
}

TEST_F(CookieStoreReaderTest, AnotherStoreInTheSamePlaceBeginsAfresh) {
  const Generations bytes = threeCommands(folder_);
  write(bytes.store);
  writeLog(bytes.log);
  EXPECT_EQ(reader_.Extract(path()), u"newest");
  const Text other = folder_.write(u"other", bytes.store);
  writeLog(bytes.log.substr(0, bytes.logWithMiddle));
  EXPECT_EQ(reader_.Extract(path()), u"");
  std::filesystem::rename(toPath(other), toPath(path()));
  EXPECT_EQ(reader_.Extract(path()), u"middle");
}

TEST_F(CookieStoreReaderTest, ALogWithoutItsStoreIsAMissingStore) {
  writeLog(threeCommands(folder_).log);
  EXPECT_EQ(reader_.Extract(path()), u"");
  EXPECT_EQ(trace_.text(), u"\r\nerreurFichier introuvable 53 - i=0");
}

TEST_F(CookieStoreReaderTest, TheOffsetIsOneDecimalLineInTheProgramFolder) {
  const Text folder = folder_.text();
  EXPECT_EQ(loadOffsetCookie(folder), 0);
  EXPECT_FALSE(saveOffsetCookie(folder, 965905));
  EXPECT_EQ(bytesIn(folder_ / u"offsetCookie.dat"), "965905\r\n");
  EXPECT_EQ(loadOffsetCookie(folder), 965905);
  EXPECT_FALSE(saveOffsetCookie(folder, -1));
  EXPECT_EQ(loadOffsetCookie(folder), -1);
  EXPECT_EQ(saveOffsetCookie(folder_ / u"none", 3).number, 53);

  const struct {
    std::string bytes;
    std::int32_t offset;
  } rows[] = {{"", 0},           {"abc\r\n", 0},
              {"12", 12},        {" 12 \r\n99\r\n", 12},
              {"12,5\r\n", 12},  {"2147483647", INT32_MAX},
              {"2147483648", 0}, {"\r\n12", 0},
              {"12\xE9", 0}};
  for (const auto& row : rows) {
    folder_.write(u"offsetCookie.dat", row.bytes);
    EXPECT_EQ(loadOffsetCookie(folder), row.offset) << row.bytes;
  }
}
