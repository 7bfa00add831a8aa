// SPDX-License-Identifier: GPL-3.0-or-later
// Whatever happens to a browser's store, the reader answers what SQLite itself answers.
#include <gtest/gtest.h>

#include <memory>
#include <random>

#include "bridge/CookieStoreReader.h"
#include "text/AnsiCodePage.h"
#include "unit/bridge/BrowserStore.h"

namespace {

class RandomStore {
 public:
  explicit RandomStore(unsigned seed) : random_(seed) {
    const int sizes[] = {512, 1024, 4096, 32768};
    store_ = std::make_unique<FirefoxStore>(folder_ / u"store", sizes[seed % 4]);
    if (seed % 8 == 0) store_->database().run("PRAGMA auto_vacuum=FULL; VACUUM");
    if (seed % 3 == 0) store_->database().run("PRAGMA secure_delete=OFF");
  }

  // Something that a browser does; the result names it.
  std::string step() {
    switch (upTo(12)) {
      case 0:
      case 1:
      case 2:
      case 3: return setCommand("");
      case 4: return run("DELETE FROM moz_cookies WHERE name = 'Tavr1CodeToExe'");
      case 5: return setCommand("evil.example");
      case 6:
      case 7: return setOthers(1 + upTo(8));
      case 8:
        return run("DELETE FROM moz_cookies WHERE name <> 'Tavr1CodeToExe' AND id % 3 = " +
                   std::to_string(upTo(3)));
      case 9: return run("VACUUM");
      case 10: return checkpoint();
      case 11:
        return run("UPDATE moz_cookies SET lastAccessed = lastAccessed + 1 WHERE id % 2 = 0");
      default:
        return run("UPDATE moz_cookies SET path = path || 'x' WHERE id % 5 = 0 AND host <> ''");
    }
  }

  std::string command() {
    const std::string value = store_->database().ask(
        "SELECT value FROM moz_cookies WHERE name = 'Tavr1CodeToExe' AND host = ''");
    return value == "(none)" ? std::string() : value.substr(0, value.find("_e-o-v_"));
  }

  const Text& path() const { return store_->path(); }

 private:
  int upTo(int most) { return std::uniform_int_distribution<int>(0, most)(random_); }

  std::string letters(int size) {
    std::string text;
    while (size-- > 0) text += "ab_|/."[upTo(5)];
    return text;
  }

  std::string setCommand(const std::string& host) {
    const std::string value = "c" + letters(upTo(200));
    store_->setCommand(value, host);
    return "command " + value + " of " + host;
  }

  std::string setOthers(int count) {
    for (int i = 0; i < count; ++i) {
      store_->set("other" + std::to_string(upTo(60)), letters(upTo(600)), "site.example");
    }
    // A web site may write anything into its own cookies.
    store_->set("other", "Tavr1CodeToExe" + withMarker("ini_|_x"), "evil.example");
    return "others";
  }

  std::string checkpoint() {
    const std::string modes[] = {"PASSIVE", "FULL", "RESTART", "TRUNCATE"};
    return run("PRAGMA wal_checkpoint(" + modes[upTo(3)] + ")");
  }

  std::string run(const std::string& sql) {
    store_->database().run(sql);
    return sql;
  }

  StoreFolder folder_;
  std::mt19937 random_;
  std::unique_ptr<FirefoxStore> store_;
};

}  // namespace

TEST(RandomStores, TheReaderAnswersWhatSqliteAnswers) {
  int found = 0;
  for (unsigned seed = 0; seed < 16; ++seed) {
    RandomStore store(seed);
    TraceBuffer trace;
    CookieStoreReader reader(trace, {});
    for (int round = 0; round < 150; ++round) {
      const std::string step = store.step();
      const std::string command = store.command();
      ASSERT_EQ(reader.Extract(store.path()), fromAnsi(command))
          << "seed " << seed << ", round " << round << ": " << step;
      found += command.empty() ? 0 : 1;
    }
    for (const Text& line : trace.messages()) {
      EXPECT_EQ(line, u"cookie refusé, hôte : evil.example");
    }
  }
  EXPECT_GT(found, 500);
}
