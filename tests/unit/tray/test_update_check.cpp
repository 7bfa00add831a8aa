// SPDX-License-Identifier: GPL-3.0-or-later
#include "tray/UpdateCheck.h"

#include <gtest/gtest.h>

#include "support/Doubles.h"
#include "support/Processes.h"
#include "support/Scratch.h"
#include "text/Paths.h"

namespace {

constexpr const char* kFile = "LastDateCheckUpdate.txt";
constexpr const char* kWrittenToday =
    "21/11/2026\r\njj/mm/aaaa\r\n"
    "(Date de Derni\xE8re v\xE9rification de la mise \xE0 jour)\r\n";

// The local time of a day in November 2026.
std::time_t november(int day, int hour, int minute) {
  std::tm calendar{};
  calendar.tm_year = 126;
  calendar.tm_mon = 10;
  calendar.tm_mday = day;
  calendar.tm_hour = hour;
  calendar.tm_min = minute;
  calendar.tm_isdst = -1;
  return std::mktime(&calendar);
}

class UpdateCheckTest : public ::testing::Test {
 protected:
  Failure check(bool force) {
    return CheckForUpdate(force, now, {programFolder, executable, 67, locale, shell});
  }
  void lastCheck(const std::string& firstLine) {
    folder.write(kFile, firstLine + "\r\njj/mm/aaaa\r\nreste\r\n");
  }
  bool started() const { return journal == Journal({"execute " + folder.path("bin/updater")}); }

  Scratch folder;
  Text programFolder = folder.text();
  Text executable = folder.text("bin/tavrollo");
  LocaleData locale = frenchLocale();
  std::time_t now = november(21, 12, 0);
  Journal journal;
  RecordingShell shell{journal};
};

}  // namespace

TEST_F(UpdateCheckTest, AnUnforcedCheckComesAfterSevenDays) {
  struct Row {
    const char* last;
    bool starts;
  };
  const Row rows[] = {
      {"21/11/2026", false}, {"15/11/2026", false},  // 0 and 6 days
      {"14/11/2026", true},  {"13/11/2026", true},   // 7 and 8 days
      {"01/01/1970", true},  {"14/11/26", true},    {"15/11/26", false},
      {"22/11/2026", false}, {"27/11/2026", false},  // the clock was set back
      {"28/11/2026", true},
  };
  for (const Row& row : rows) {
    journal.clear();
    lastCheck(row.last);
    const std::string before = folder.read(kFile);
    EXPECT_FALSE(check(false)) << row.last;
    EXPECT_EQ(started(), row.starts) << row.last;
    EXPECT_EQ(folder.read(kFile), row.starts ? kWrittenToday : before) << row.last;
  }
}

TEST_F(UpdateCheckTest, DaysChangeAtMidnight) {
  lastCheck("14/11/2026");
  now = november(20, 23, 59);
  EXPECT_FALSE(check(false));
  EXPECT_FALSE(started());
  now = november(21, 0, 0);
  EXPECT_FALSE(check(false));
  EXPECT_TRUE(started());
}

TEST_F(UpdateCheckTest, ADayInTheUsersShortFormIsUnderstood) {
  struct Row {
    const char* format;
    const char* six;
    const char* seven;
  };
  const Row rows[] = {
      {"%m/%d/%Y", "11/15/2026", "11/14/2026"},
      {"%Y-%m-%d", "2026-11-15", "2026-11-14"},
      {"%d.%m.%Y", "15.11.2026", "14.11.2026"},
      {"%d/%m/%y", "15/11/26", "14/11/26"},
      {"%Y年%m月%d日", "2026年11月15日", "2026年11月14日"},
  };
  for (const Row& row : rows) {
    locale.dateFormat = row.format;
    journal.clear();
    lastCheck(row.six);
    EXPECT_FALSE(check(false)) << row.six;
    EXPECT_TRUE(journal.empty()) << row.six;
    lastCheck(row.seven);
    EXPECT_FALSE(check(false)) << row.seven;
    EXPECT_TRUE(started()) << row.seven;
    EXPECT_EQ(folder.read(kFile), kWrittenToday) << "whatever the user's form is";
  }
}

TEST_F(UpdateCheckTest, DayMonthYearGoesBeforeTheUsersForm) {
  locale.dateFormat = "%m/%d/%Y";
  lastCheck("11/12/2026");  // the 11th of December, 20 days off, not the 12th of November
  EXPECT_FALSE(check(false));
  EXPECT_TRUE(started());
}

TEST_F(UpdateCheckTest, WithoutAFileTheLastDayIsLongAgo) {
  EXPECT_FALSE(check(false));
  EXPECT_TRUE(started());
  EXPECT_EQ(folder.read(kFile), kWrittenToday);
}

TEST_F(UpdateCheckTest, AGarbledDayStopsAnUnforcedCheckOnly) {
  for (const char* garbled : {"bientôt", "32/01/2026", "", "11/14"}) {
    journal.clear();
    lastCheck(garbled);
    const std::string before = folder.read(kFile);
    EXPECT_EQ(check(false), (Failure{13, u"Incompatibilité de type"})) << garbled;
    EXPECT_TRUE(journal.empty()) << garbled;
    EXPECT_EQ(folder.read(kFile), before) << garbled;

    EXPECT_FALSE(check(true)) << garbled;
    EXPECT_TRUE(started()) << garbled;
    EXPECT_EQ(folder.read(kFile), kWrittenToday) << garbled;
  }
}

TEST_F(UpdateCheckTest, AnEmptyFileStopsEveryCheck) {
  folder.write(kFile, "");
  for (const bool force : {false, true}) {
    const Failure failure = check(force);
    EXPECT_EQ(failure.number, 62) << force;
    EXPECT_TRUE(failure.description.ends_with(u" : " + folder.text(kFile))) << force;
    EXPECT_TRUE(journal.empty()) << force;
    EXPECT_EQ(folder.read(kFile), "") << force;
  }
}

#ifndef TAVROLLO_WITHOUT_POSIX  // it is run without rights
TEST_F(UpdateCheckTest, AFileThatCannotBeReadStopsEveryCheck) {
  lastCheck("01/01/1970");
  std::filesystem::permissions(folder.path(kFile), std::filesystem::perms::none);
  const int outcome = inChildWithoutRights([this] {
    const Failure denied{70, u"Permission refusée : " + folder.text(kFile)};
    return check(false) == denied && check(true) == denied && journal.empty() ? 0 : 1;
  });
  EXPECT_EQ(outcome, 0);
}
#endif

TEST_F(UpdateCheckTest, AForcedCheckComesAlsoOnTheSameDay) {
  lastCheck("21/11/2026");
  EXPECT_FALSE(check(true));
  EXPECT_TRUE(started());
  EXPECT_EQ(folder.read(kFile), kWrittenToday);
}

TEST_F(UpdateCheckTest, AFailedStartStillCountsAsACheck) {
  shell.failure = {53, u"Fichier introuvable : updater"};
  EXPECT_FALSE(check(true)) << "it fails silently";
  EXPECT_TRUE(started());
  EXPECT_EQ(folder.read(kFile), kWrittenToday);
}

#ifndef TAVROLLO_WITHOUT_POSIX  // it is run without rights
TEST_F(UpdateCheckTest, AReadOnlyFolderIsToldAndNothingIsStarted) {
  std::filesystem::permissions(folder.path(), static_cast<std::filesystem::perms>(0555));
  const int outcome = inChildWithoutRights([this] {
    const Failure failure = check(true);
    const bool told = failure.number == 70 &&
                      failure.description == u"Permission refusée : " + folder.text(kFile);
    return told && journal.empty() ? 0 : 1;
  });
  EXPECT_EQ(outcome, 0);
}
#endif

TEST_F(UpdateCheckTest, TheUpdaterGetsFourTabSeparatedValues) {
  EXPECT_FALSE(check(true));
  ASSERT_EQ(shell.requests.size(), 1u);
  const ShellRequest& request = shell.requests[0];
  EXPECT_EQ(request.operation, u"");
  EXPECT_EQ(request.parameters, u"setup_Tavrollo\t67\tTavrollo\ttavrollo");
  EXPECT_EQ(request.show, ShowState::Normal);
  EXPECT_EQ(request.directory, folder.text("bin") + nativeSeparator());
}

TEST_F(UpdateCheckTest, TheProgramIsNamedByWhatStandsInFrontOfItsLastDotAndThePlatformsEnding) {
  struct Row {
    TextView executable;
    TextView updater;
    TextView lastValue;
  };
  const Row rows[] = {
      {u"Tavrollo.exe", u"updater.exe", u"Tavrollo.exe"},
      {u"Tavrollo.2.exe", u"updater.exe", u"Tavrollo.2.exe"},
      {u"tavrollo", u"updater", u"tavrollo"},
      {u"tavrollo.bin", u"updater", u"tavrollo"},
      {u"tavrollo.2.bin", u"updater", u"tavrollo.2"},
      {u"mon tavrollo.bin", u"updater", u"mon tavrollo"},
  };
  for (const Row& row : rows) {
    const Text place = nativePath(u"C:\\Tavrollo.d\\");
    const ShellRequest request = updaterRequest(place + Text(row.executable), 7);
    EXPECT_EQ(request.file, place + Text(row.updater));
    EXPECT_EQ(request.parameters,
              u"setup_Tavrollo\t7\tTavrollo\t" + parameterWord(Text(row.lastValue)));
  }
}
