// SPDX-License-Identifier: GPL-3.0-or-later
#include "bridge/StoreScan.h"

#include <gtest/gtest.h>

#include "unit/bridge/BrowserStore.h"

namespace {

using Outcome = ScanResult::Outcome;

const std::string kName(kCookieName);
const std::string kCommand = kName + "ini_|_k_|__e-o-v_";
constexpr std::size_t kPiece = 256 * 1024;

class StoreScanTest : public testing::Test {
 protected:
  ScanResult scanFile(const Text& path, std::int32_t offset = 0, const AllowedHosts& hosts = {}) {
    yields_ = 0;
    StoreImage image;
    EXPECT_FALSE(image.open(path));
    return scanStore(image, offset, hosts, [this] { ++yields_; });
  }

  ScanResult scan(std::string_view bytes, std::int32_t offset = 0) {
    return scanFile(folder_.write(u"store", bytes), offset);
  }

  // The position in which the name is found; 0 when it is not.
  std::int64_t positionIn(std::string_view bytes, std::int32_t offset = 0) {
    const ScanResult result = scan(bytes, offset);
    EXPECT_NE(result.outcome, Outcome::Failed);
    return result.outcome == Outcome::Found ? result.position : 0;
  }

  StoreFolder folder_;
  int yields_ = 0;
};

// `bytes` with `what` put over it at a 1-based position.
std::string with(std::string bytes, std::size_t position, std::string_view what) {
  return bytes.replace(position - 1, what.size(), what);
}

std::string blank(std::size_t size) { return std::string(size, '.'); }

}  // namespace

TEST_F(StoreScanTest, FindsTheNameAndReadsTheValueBehindIt) {
  const ScanResult result = scan(blank(100) + kName + "runapp_|_C:/x.exe_|__e-o-v_" + blank(5));
  EXPECT_EQ(result.outcome, Outcome::Found);
  EXPECT_EQ(result.position, 101);
  EXPECT_EQ(result.value, "runapp_|_C:/x.exe_|_");
  EXPECT_FALSE(result.hasHost);
  EXPECT_TRUE(result.refusedHosts.empty());
}

TEST_F(StoreScanTest, ReadsTheValueToItsEndMarker) {
  const struct {
    std::string behindName;
    std::string value;
  } rows[] = {
      {"_e-o-v_", ""},
      {"a_e-o-v_", "a"},
      {"../../user_datas/a_b_e-o-v_", "../../user_datas/a_b"},
      {"___e-o-v_", "__"},
      {"a_e-o-v__e-o-v_", "a"},
      {"a_e-o-_e-o-v_", "a_e-o-"},
      {"a_e-o-v_e-o-v_", "a"},
      {"a_E-O-V__e-o-v_", "a_E-O-V_"},
      {std::string("a\0\xFF\r\n_e-o-v_", 12), std::string("a\0\xFF\r\n", 5)},
  };
  for (const auto& row : rows) {
    for (const std::string tail : {"", "....", "_"}) {
      const ScanResult result = scan("xx" + kName + row.behindName + tail);
      EXPECT_EQ(result.outcome, Outcome::Found);
      EXPECT_EQ(result.position, 3);
      EXPECT_EQ(result.value, row.value);
    }
  }
}

TEST_F(StoreScanTest, AValueIsReadForAtMost256Bytes) {
  for (const std::size_t length : {254u, 255u, 256u, 257u, 300u}) {
    const std::string value(length, 'v');
    const ScanResult result = scan("xx" + kName + value + "_e-o-v_" + blank(20));
    EXPECT_EQ(result.outcome, Outcome::Found);
    EXPECT_EQ(result.value, value.substr(0, 256)) << length;
  }
  // Its last byte may be an underscore, which asks for the six bytes behind it.
  const std::string almost = std::string(255, 'v') + "_";
  EXPECT_EQ(scan("xx" + kName + almost + "e-o-x_").value, almost);
  EXPECT_EQ(scan("xx" + kName + almost + "e-o-v_").value, std::string(255, 'v'));
}

TEST_F(StoreScanTest, AValueCutByTheEndOfTheFileIsAFailure) {
  const struct {
    std::string behindName;
    bool fails;
  } rows[] = {
      {"", true},
      {"a", true},
      {"a_e-o-v", true},
      {"a_e-o-v_", false},
      {std::string(255, 'v'), true},
      {std::string(256, 'v'), false},
      {std::string(255, 'v') + "_", true},
      {std::string(255, 'v') + "_12345", true},
      {std::string(255, 'v') + "_123456", false},
      {std::string(250, 'v') + "_vvvvv", true},
      {std::string(249, 'v') + "_vvvvvv", false},
      {std::string(256, 'v') + "_", false},
  };
  for (const auto& row : rows) {
    const ScanResult result = scan("xx" + kName + row.behindName);
    EXPECT_EQ(result.outcome, row.fails ? Outcome::Failed : Outcome::Found) << row.behindName;
    if (!row.fails) continue;
    EXPECT_EQ(result.failure, failures::pastEndOfFile());
    EXPECT_EQ(result.position, 3);
    EXPECT_EQ(result.value, "");
  }
}

TEST_F(StoreScanTest, ANameCutByTheEndOfTheFileIsNotFound) {
  for (std::size_t length = 1; length < kName.size(); ++length) {
    EXPECT_EQ(scan("xx" + kName.substr(0, length)).outcome, Outcome::NotFound);
  }
}

TEST_F(StoreScanTest, TheFirstTwoPositionsAreNeverLookedAt) {
  EXPECT_EQ(positionIn(kCommand + blank(40)), 0);
  EXPECT_EQ(positionIn("x" + kCommand + blank(40)), 0);
  EXPECT_EQ(positionIn("xx" + kCommand + blank(40)), 3);
  EXPECT_EQ(positionIn(kCommand + kCommand), static_cast<std::int64_t>(kCommand.size()) + 1);
  for (const std::string bytes : {"", "x", "xx", "xxx"}) EXPECT_EQ(positionIn(bytes, 5), 0);
}

TEST_F(StoreScanTest, TheNameIsFoundInItsExactCaseAlone) {
  EXPECT_EQ(positionIn("xxtavr1CodeToExea_e-o-v_..."), 0);
  EXPECT_EQ(positionIn("xxTAVR1CODETOEXEa_e-o-v_..."), 0);
  EXPECT_EQ(positionIn("xxTavr1CodeToExE" + kCommand), 17);
  EXPECT_EQ(positionIn("xxTavTavr1CodeToTTavr1CodeToExea_e-o-v_"), 18);
}

TEST_F(StoreScanTest, TheScanBegins256BytesBeforeTheOffset) {
  const std::string bytes = with(with(blank(2000), 500, kCommand), 1500, kCommand);
  const struct {
    std::int32_t offset;
    std::int64_t position;
  } rows[] = {
      {-5, 500},   {0, 500},    {2, 500},         {3, 500},         {500, 500},
      {756, 500},  {757, 1500}, {1500, 1500},     {1756, 1500},     {1757, 500},
      {2000, 500}, {2001, 500}, {INT32_MAX, 500}, {INT32_MIN, 500},
  };
  for (const auto& row : rows) EXPECT_EQ(positionIn(bytes, row.offset), row.position) << row.offset;
}

TEST_F(StoreScanTest, AnOffsetBehindTheEndCountsAsTheBeginning) {
  const std::string bytes = with(with(blank(2000), 500, kCommand), 1900, kCommand);
  EXPECT_EQ(positionIn(bytes, 2000), 1900);
  EXPECT_EQ(positionIn(bytes, 2001), 500);
  EXPECT_EQ(positionIn(bytes, 2100), 500);
}

TEST_F(StoreScanTest, TheSecondPassCoversWhatTheFirstLeftOut) {
  // A name that straddles the place where the first pass began, at each of its bytes.
  for (std::size_t behind = 0; behind <= kName.size(); ++behind) {
    const std::string bytes = with(blank(2000), 1000 - behind, kCommand);
    EXPECT_EQ(positionIn(bytes, 1256), 1000 - static_cast<std::int64_t>(behind)) << behind;
  }
  EXPECT_EQ(positionIn(blank(2000), 1256), 0);
}

TEST_F(StoreScanTest, TheFirstOccurrenceAtOrAfterTheStartWins) {
  const std::string bytes =
      "xx" + kName + "a_e-o-v_" + kName + "b_e-o-v_" + blank(600) + kName + "c_e-o-v_";
  EXPECT_EQ(scan(bytes).value, "a");
  EXPECT_EQ(scan(bytes, 262).value, "b");
  EXPECT_EQ(scan(bytes, 640).value, "c");
}

TEST_F(StoreScanTest, TheNameIsFoundAcrossTheBorderOfTwoPieces) {
  for (std::size_t split = 0; split <= kName.size(); ++split) {
    for (const std::size_t piece : {1u, 2u}) {
      // Each piece after the first carries 13 bytes, so borders move by them.
      const std::size_t border = 2 + kPiece + (piece - 1) * (kPiece - 13);
      const std::size_t position = border + 1 - split;
      EXPECT_EQ(positionIn(with(blank(border + 100), position, kCommand)),
                static_cast<std::int64_t>(position));
    }
  }
}

TEST_F(StoreScanTest, EveryPlaceInALongFileIsFound) {
  for (std::size_t position = 3; position < 700'000; position += 4099) {
    ASSERT_EQ(positionIn(with(blank(700'100), position, kCommand)),
              static_cast<std::int64_t>(position));
  }
}

TEST_F(StoreScanTest, YieldsBetweenThePieces) {
  scan(blank(10 * kPiece));
  EXPECT_GE(yields_, 10);
  StoreImage image;
  ASSERT_FALSE(image.open(folder_.write(u"store", "xx" + kCommand)));
  EXPECT_EQ(scanStore(image, 0, {}, {}).outcome, Outcome::Found);
}

TEST_F(StoreScanTest, AStoreOfMoreThan2GiBIsAFailure) {
  const Text path = folder_.write(u"store", "xx" + kCommand);
  std::filesystem::resize_file(toPath(path), std::uintmax_t{1} << 31);
  const ScanResult result = scanFile(path);
  EXPECT_EQ(result.outcome, Outcome::Failed);
  EXPECT_EQ(result.failure, failures::overflow());
}

TEST_F(StoreScanTest, AFileThatShrinksWhileItIsReadIsAFailure) {
  const Text path = folder_.write(u"store", blank(4 * kPiece));
  StoreImage image;
  ASSERT_FALSE(image.open(path));
  int pieces = 0;
  const ScanResult result = scanStore(image, 0, {}, [&] {
    if (++pieces == 2) std::filesystem::resize_file(toPath(path), 10);
  });
  EXPECT_EQ(result.outcome, Outcome::Failed);
  EXPECT_EQ(result.failure, failures::pastEndOfFile());
  EXPECT_EQ(result.position, 3 + static_cast<std::int64_t>(kPiece));
}

TEST_F(StoreScanTest, TheErrorLineNamesWhatHappenedAndWhere) {
  EXPECT_EQ(scanErrorLine(failures::pastEndOfFile(), 1234),
            u"erreurL'entrée dépasse la fin du fichier 62 - i=1234");
  EXPECT_EQ(scanErrorLine({53, u"Fichier introuvable"}, 0), u"erreurFichier introuvable 53 - i=0");
  EXPECT_EQ(refusedHostLine("évil.example"), u"cookie refusé, hôte : évil.example");
}

TEST_F(StoreScanTest, InADatabaseTheRowCountsAndItsIndexEntryDoesNot) {
  FirefoxStore store(folder_ / u"cookies.sqlite");
  store.setOthers(3000);
  store.setCommand("runapp_|_x_|_");
  store.database().run("PRAGMA wal_checkpoint(TRUNCATE)");
  const std::string bytes = bytesIn(store.path());
  const ScanResult result = scanFile(store.path());
  EXPECT_EQ(result.outcome, Outcome::Found);
  EXPECT_EQ(result.value, "runapp_|_x_|_");
  EXPECT_TRUE(result.hasHost);
  EXPECT_EQ(result.host, "");
  EXPECT_EQ(bytes.substr(static_cast<std::size_t>(result.position) - 1, 22), kName + "runapp_|");
  // The index entry stands before it, so a scan of bare bytes would have gone wrong.
  EXPECT_LT(bytes.find(kName), static_cast<std::size_t>(result.position) - 1);
  for (const std::int32_t offset : {static_cast<std::int32_t>(result.position), 3, 2'000'000'000}) {
    EXPECT_EQ(scanFile(store.path(), offset).position, result.position);
  }
}

TEST_F(StoreScanTest, ACommandThatIsInTheLogAloneIsFoundAtItsPlaceInTheImage) {
  FirefoxStore store(folder_ / u"cookies.sqlite");
  store.setOthers(3000);
  store.database().run("PRAGMA wal_checkpoint(TRUNCATE)");
  store.setCommand("ini_|_k_|_");
  ASSERT_EQ(bytesIn(store.path()).find(kName), std::string::npos);
  const ScanResult fromLog = scanFile(store.path());
  EXPECT_EQ(fromLog.value, "ini_|_k_|_");
  store.database().run("PRAGMA wal_checkpoint(TRUNCATE)");
  EXPECT_EQ(scanFile(store.path()).position, fromLog.position);
}

TEST_F(StoreScanTest, RowsOfForeignHostsAreToldOnceAndPassedOver) {
  FirefoxStore store(folder_ / u"cookies.sqlite", 1024);
  for (const std::string path : {"/a", "/b", "/c"}) {
    store.set(kName, "x_e-o-v_", "evil.example", path);
  }
  store.set(kName, "x_e-o-v_", "other.example");
  ScanResult result = scanFile(store.path(), 2000);
  EXPECT_EQ(result.outcome, Outcome::NotFound);
  EXPECT_EQ(result.refusedHosts.size(), 2u);

  store.setCommand("ini_|_k_|_", "localhost");
  result = scanFile(store.path());
  EXPECT_EQ(result.outcome, Outcome::Found);
  EXPECT_EQ(result.host, "localhost");
  EXPECT_EQ(result.value, "ini_|_k_|_");

  result = scanFile(store.path(), 0, AllowedHosts("evil.example"));
  EXPECT_EQ(result.outcome, Outcome::Found);
}

TEST_F(StoreScanTest, AnEmptyValueIsACommandWithoutAValue) {
  ChromiumStore store(folder_ / u"Cookies");
  store.set(kName, "", "763130aabbccdd", "localhost");
  store.set("zzz", "ini_|_x_|__e-o-v_", "", "localhost");
  const ScanResult result = scanFile(folder_ / u"Cookies");
  EXPECT_EQ(result.outcome, Outcome::Found);
  EXPECT_EQ(result.value, "");
  EXPECT_EQ(result.host, "localhost");
}

TEST_F(StoreScanTest, ADamagedPageYieldsNoHitsAndNeverARawScan) {
  const Text path = folder_ / u"cookies.sqlite";
  FirefoxStore store(path, 1024);
  store.setCommand("ini_|_k_|_");
  store.database().run("PRAGMA journal_mode=DELETE");
  store.database().close();
  const std::string whole = bytesIn(path);
  const ScanResult good = scanFile(path);
  ASSERT_EQ(good.outcome, Outcome::Found);
  const auto rowPage = static_cast<std::size_t>(good.position - 1) / 1024;
  ASSERT_GT(rowPage, 0u);
  for (const std::size_t type :
       {std::size_t{100}, rowPage * 1024}) {  // where pages tell their kind
    std::string damaged = whole;
    damaged[type] = '\x7F';
    EXPECT_EQ(scan(damaged).outcome, Outcome::NotFound) << type;
  }
  // Without the header the same bytes are no database: the first occurrence counts.
  std::string noDatabase = whole;
  noDatabase[0] = 's';
  const ScanResult raw = scan(noDatabase);
  EXPECT_EQ(raw.position, static_cast<std::int64_t>(noDatabase.find(kName)) + 1);
  EXPECT_FALSE(raw.hasHost);
}

TEST_F(StoreScanTest, ADatabaseCutAnywhereGivesItsCommandOrNothing) {
  const Text path = folder_ / u"cookies.sqlite";
  FirefoxStore store(path, 512);
  store.setOthers(10);
  store.setCommand("ini_|_k_|_");
  store.database().run("PRAGMA journal_mode=DELETE");
  store.database().close();
  const std::string whole = bytesIn(path);
  ASSERT_EQ(scan(whole).value, "ini_|_k_|_");
  for (std::size_t length = 100; length < whole.size(); length += 7) {
    const ScanResult result = scan(whole.substr(0, length));
    if (result.outcome != Outcome::Found) continue;
    ASSERT_EQ(result.value, "ini_|_k_|_") << length;
  }
}
