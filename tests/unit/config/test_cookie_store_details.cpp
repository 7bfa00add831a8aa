// SPDX-License-Identifier: GPL-3.0-or-later
#include "config/CookieStoreDetails.h"

#include <gtest/gtest.h>

#include <chrono>
#include <ctime>

#include "support/Scratch.h"
#include "text/LocaleData.h"

namespace {

class CookieStoreDetails : public testing::Test {
 protected:
  static constexpr std::time_t kMinute = 60;

  // The file was last written to at `second`.
  void writtenAt(const char* name, std::time_t second) const {
    using std::chrono::file_clock;
    using std::chrono::system_clock;
    const auto age = system_clock::now() - system_clock::from_time_t(second);
    const auto time = file_clock::now() - std::chrono::duration_cast<file_clock::duration>(age);
    // Half a second, so that the two clocks' distance does not matter.
    std::filesystem::last_write_time(toPath(scratch.text(name)),
                                     time + std::chrono::milliseconds(500));
  }

  Text details() const {
    return cookieStoreDetails(scratch.text("cookies.sqlite"), frenchLocale());
  }

  // `size` is the text of the size.
  static Text writtenText(const Text& size, std::time_t second) {
    return size + u", dernière écriture le " + dateText(second, {u',', "%d/%m/%Y"}) + u" à " +
           dateText(second, {u',', "%H:%M:%S"});
  }

  Scratch scratch;
  std::time_t noon = 1'479'729'600;  // in November 2016
};

}  // namespace

TEST_F(CookieStoreDetails, TellTheSizeAndTheLastWriting) {
  scratch.write("cookies.sqlite", std::string(2048, 'x'));
  writtenAt("cookies.sqlite", noon);
  EXPECT_EQ(details(), writtenText(u"2,00 Ko", noon));
}

TEST_F(CookieStoreDetails, TheLogsWritingCountsWhenItIsLater) {
  scratch.write("cookies.sqlite", "x");
  scratch.write("cookies.sqlite-wal", "longer than the store");
  writtenAt("cookies.sqlite", noon);
  writtenAt("cookies.sqlite-wal", noon + kMinute);
  EXPECT_EQ(details(), writtenText(u"1 octets", noon + kMinute));
  writtenAt("cookies.sqlite-wal", noon - kMinute);
  EXPECT_EQ(details(), writtenText(u"1 octets", noon));
}

TEST_F(CookieStoreDetails, AStoreThatIsGoneHasNone) { EXPECT_EQ(details(), u""); }
