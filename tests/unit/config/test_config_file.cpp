// SPDX-License-Identifier: GPL-3.0-or-later
#include "config/ConfigFile.h"

#include <gtest/gtest.h>

#include <limits>
#include <random>

#include "config/ConfigBoxes.h"
#include "support/Doubles.h"
#include "support/Scratch.h"
#include "text/Split.h"

namespace {

const LocaleData kFrench = frenchLocale();
const LocaleData kPoint = {u'.', "%m/%d/%Y"};

Settings someSettings() {
  return {.browser = 1,
          .cookiesPath = u"C:\\Users\\Zoé\\Cookies",
          .pollInterval = 1500,
          .shortcutPath = u"C:\\Tavrollo\\nav\\res_css\\js\\shortQrCode.js",
          .scaleX = 600,
          .scaleY = 550,
          .notifications = 0,
          .backupPath = u"E:\\sauvegarde"};
}

// Windows-1252, as it stands in the file, line for line: \xE9 é, \xE8 è.
// clang-format off
const std::string kSomeBytes =
    ";Tavrollo - Fichier de Configuration du programme ex\xE9" "cutable Tavrollo.exe\r\n"
    ";ATTENTION : Ne modifiez ce fichier que si vous savez ce que vous faites !\r\n"
    ";" + std::string(73, '-') + "\r\n"
    ";choix du navigateur internet entrez un nombre : 0 pour fireFox ( >50.0 de nov 2016)  1 pour googleChrome ( >54 de oct 2016)\r\n"
    "1\r\n"
    ";entrez le chemin des cookies correspondant au syst\xE8me d'exploitation et du navigateur choisi\r\n"
    "C:\\Users\\Zo\xE9\\Cookies\r\n"
    ";entrez la temporisation en milli secondes entre deux tests de changements effectu\xE9 sur le fichier cookies\r\n"
    "1500\r\n"
    ";chemin du fichier shortQrCode.js   qui se trouve dans \\nav\\res_css\\js\r\n"
    "C:\\Tavrollo\\nav\\res_css\\js\\shortQrCode.js\r\n"
    ";Echelle d'affichage graphique X (567 par d\xE9" "faut)\r\n"
    "600\r\n"
    ";Echelle d'affichage graphique Y (567 par d\xE9" "faut)\r\n"
    "550\r\n"
    ";Afficher les messages barre de taches 0 non 1 oui\r\n"
    "0\r\n"
    ";Dernier chemin de la sauvegarde (Synchronisation)\r\n"
    "E:\\sauvegarde\r\n"
    ";" + std::string(36, '-') + "\r\n"
    ";\r\n"
    ";\r\n"
    ";Hugo Pelleriac - novembre 2016\r\n";
// clang-format on

bool read(const std::string& bytes, Settings& settings, const LocaleData& locale = kFrench) {
  return readConfig(bytes, locale, settings, nullptr);
}

std::vector<std::string> linesOf(const std::string& bytes) {
  const auto lines = splitLines(bytes);
  return {lines.begin(), lines.end()};
}

std::string joined(const std::vector<std::string>& lines, const std::string& end = "\r\n") {
  std::string bytes;
  for (const std::string& line : lines) bytes += line + end;
  return bytes;
}

// kSomeBytes with one line (counted from 1) replaced.
std::string withLine(std::size_t number, const std::string& line) {
  std::vector<std::string> lines = linesOf(kSomeBytes);
  lines[number - 1] = line;
  return joined(lines);
}

}  // namespace

TEST(ConfigFile, IsWrittenToTheByte) {
  EXPECT_EQ(configBytes(someSettings(), kFrench), kSomeBytes);
  EXPECT_EQ(splitLines(kSomeBytes).size(), 23u);
}

TEST(ConfigFile, WhatWasWrittenReadsBack) {
  Settings settings;
  ASSERT_TRUE(read(kSomeBytes, settings));
  EXPECT_EQ(settings, someSettings());
}

TEST(ConfigFile, TheNumbersMayReachTheirBounds) {
  Settings written = someSettings();
  written.browser = std::numeric_limits<std::int16_t>::min();
  written.pollInterval = std::numeric_limits<std::int32_t>::max();
  written.scaleX = -3;
  Settings settings;
  ASSERT_TRUE(read(configBytes(written, kFrench), settings));
  EXPECT_EQ(settings, written);
}

TEST(ConfigFile, EmptyPathsReadBack) {
  Settings settings = someSettings();
  ASSERT_TRUE(read(configBytes(Settings(), kFrench), settings));
  EXPECT_EQ(settings, Settings());
}

TEST(ConfigFile, AHomeThatTheCodePageLacksSurvives) {
  Settings written = someSettings();
  written.cookiesPath = u"/home/Łukasz/.mozilla/firefox/é/cookies.sqlite";
  written.shortcutPath = u"/home/Łukasz/Tavrollo/nav/res_css/js/shortQrCode.js";
  written.backupPath = u"/media/Łukasz/Ã©";
  Settings settings;
  ASSERT_TRUE(read(configBytes(written, kFrench), settings));
  EXPECT_EQ(settings, written);
}

TEST(ConfigFile, ALineBreakInAPathBecomesABlankAndShiftsNothing) {
  Settings written = someSettings();
  written.cookiesPath = u"/home/a\nb\r\nc";
  Settings settings;
  ASSERT_TRUE(read(configBytes(written, kFrench), settings));
  EXPECT_EQ(settings.cookiesPath, u"/home/a b  c");
  EXPECT_EQ(settings.backupPath, written.backupPath);
}

TEST(ConfigFile, LinesMayEndInLfAlone) {
  Settings settings;
  ASSERT_TRUE(read(joined(linesOf(kSomeBytes), "\n"), settings));
  EXPECT_EQ(settings, someSettings());
}

TEST(ConfigFile, TheLastFourLinesAreNeverRead) {
  std::vector<std::string> lines = linesOf(kSomeBytes);
  lines.resize(19);
  Settings settings;
  ASSERT_TRUE(read(joined(lines), settings));
  EXPECT_EQ(settings, someSettings());
}

TEST(ConfigFile, AFileThatEndsEarlyFailsWhereverItEnds) {
  const std::vector<std::string> lines = linesOf(kSomeBytes);
  for (std::size_t count = 0; count < 19; ++count) {
    Settings settings;
    EXPECT_FALSE(
        read(joined({lines.begin(), lines.begin() + static_cast<std::ptrdiff_t>(count)}), settings))
        << count << " lines";
  }
}

TEST(ConfigFile, WhatWasReadBeforeAFailureStays) {
  const std::vector<std::string> lines = linesOf(kSomeBytes);
  Settings settings;
  settings.backupPath = u"avant";
  settings.scaleY = 42;
  EXPECT_FALSE(read(joined({lines.begin(), lines.begin() + 14}), settings));
  Settings expected = someSettings();
  expected.scaleY = 42;
  expected.notifications = Settings().notifications;
  expected.backupPath = u"avant";
  EXPECT_EQ(settings, expected);
}

TEST(ConfigFile, AChangedCommentIsHarmless) {
  for (const std::size_t line : {1u, 2u, 3u, 4u, 6u, 8u, 10u, 12u, 14u, 16u, 18u}) {
    Settings settings;
    EXPECT_TRUE(read(withLine(line, "plus de point-virgule"), settings)) << "line " << line;
    EXPECT_EQ(settings, someSettings()) << "line " << line;
  }
}

TEST(ConfigFile, ADeletedCommentShiftsEveryLaterValue) {
  std::vector<std::string> lines = linesOf(kSomeBytes);
  lines.erase(lines.begin() + 5);  // in front of the cookie store
  Settings settings;
  EXPECT_FALSE(read(joined(lines), settings));
  EXPECT_EQ(settings.browser, 1);
  EXPECT_TRUE(settings.cookiesPath.starts_with(u";entrez la temporisation"));
  EXPECT_EQ(settings.pollInterval, Settings().pollInterval);
}

TEST(ConfigFile, ACommaInAPathCutsItAndShiftsEveryLaterValue) {
  Settings settings;
  EXPECT_FALSE(read(withLine(7, "/home/a,b/cookies.sqlite"), settings));
  EXPECT_EQ(settings.cookiesPath, u"/home/a");
  EXPECT_EQ(settings.pollInterval, Settings().pollInterval);
}

TEST(ConfigFile, ACommaInTheLastPathCutsItAlone) {
  Settings settings;
  EXPECT_TRUE(read(withLine(19, "/media/a,b"), settings));
  EXPECT_EQ(settings.backupPath, u"/media/a");
}

TEST(ConfigFile, ACommaInACommentShiftsToo) {
  Settings settings;
  EXPECT_FALSE(read(withLine(4, ";0 pour Firefox, 1 pour Chrome"), settings));
  EXPECT_EQ(settings, Settings());
}

TEST(ConfigFile, AQuotedPathMayHoldACommaAndLeadingBlanksAreSkipped) {
  Settings settings;
  EXPECT_TRUE(read(withLine(7, "   \"/home/a,b/cookies.sqlite\""), settings));
  EXPECT_EQ(settings.cookiesPath, u"/home/a,b/cookies.sqlite");
  EXPECT_EQ(settings.backupPath, someSettings().backupPath);
}

TEST(ConfigFile, AFrenchFractionIsCutAtItsCommaAndShiftsTheRest) {
  Settings written = someSettings();
  written.scaleX = 567.5;
  const std::string bytes = configBytes(written, kFrench);
  EXPECT_EQ(linesOf(bytes)[12], "567,5");
  Settings settings;
  EXPECT_FALSE(read(bytes, settings));  // the comment behind is no scale Y
  EXPECT_EQ(settings.scaleX, 567);
  EXPECT_EQ(settings.scaleY, Settings().scaleY);
}

TEST(ConfigFile, AFractionWithAPointIsRoundedHalvesToTheEvenNumber) {
  const struct {
    double written;
    double read;
  } rows[] = {{567.5, 568}, {566.5, 566}, {567.4, 567}, {567.6, 568}, {-0.5, 0}, {-1.5, -2}};
  for (const auto& row : rows) {
    Settings written = someSettings();
    written.scaleX = row.written;
    written.scaleY = row.written;
    Settings settings;
    ASSERT_TRUE(read(configBytes(written, kPoint), settings, kPoint));
    EXPECT_EQ(settings.scaleX, row.read);
    EXPECT_EQ(settings.scaleY, row.read);
  }
}

TEST(ConfigFile, NumbersThatDoNotConvertAreAFailure) {
  const struct {
    std::size_t line;
    std::string value;
  } rows[] = {
      {5, "un"},           {5, ""},     {5, "32768"},  {5, "-32769"},      {9, "mille"},
      {9, "2147483648"},   {9, ""},     {13, "grand"}, {13, "2147483648"}, {15, "567.0"},
      {15, "-2147483649"}, {17, "oui"}, {17, "3"},     {17, "-1"},         {17, "32768"},
  };
  for (const auto& row : rows) {
    Settings settings;
    EXPECT_FALSE(read(withLine(row.line, row.value), settings)) << row.line << ": " << row.value;
  }
}

TEST(ConfigFile, ARefusedNumberLeavesTheSettingAsItWas) {
  Settings settings;
  settings.notifications = 2;
  EXPECT_FALSE(read(withLine(17, "3"), settings));
  EXPECT_EQ(settings.notifications, 2);
}

TEST(ConfigFile, AnUnusualBrowserAndIntervalAreKeptAsTheyStand) {
  Settings settings;
  EXPECT_TRUE(read(withLine(5, "7"), settings));
  EXPECT_EQ(settings.browser, 7);
  EXPECT_TRUE(read(withLine(9, "0"), settings));
  EXPECT_EQ(settings.pollInterval, 0);
  EXPECT_TRUE(read(withLine(9, "-5"), settings));
  EXPECT_EQ(settings.pollInterval, -5);
}

TEST(ConfigFile, AGreyedNotificationBoxIsKeptAndWrittenBack) {
  const std::string bytes = withLine(17, "2");
  Settings settings;
  ASSERT_TRUE(read(bytes, settings));
  EXPECT_EQ(settings.notifications, 2);
  EXPECT_EQ(configBytes(settings, kFrench), bytes);
}

TEST(ConfigFile, TheCallerMayReplaceTheShortcutPathAsSoonAsItWasRead) {
  Settings settings;
  int calls = 0;
  const auto shortcutPathRead = [&] {
    ++calls;
    EXPECT_EQ(settings.shortcutPath, someSettings().shortcutPath);
    EXPECT_EQ(settings.pollInterval, someSettings().pollInterval);
    EXPECT_EQ(settings.scaleX, Settings().scaleX);
    settings.shortcutPath = u"ailleurs";
  };
  EXPECT_TRUE(readConfig(kSomeBytes, kFrench, settings, shortcutPathRead));
  EXPECT_EQ(calls, 1);
  EXPECT_EQ(settings.shortcutPath, u"ailleurs");

  EXPECT_FALSE(readConfig(withLine(9, "x"), kFrench, settings, shortcutPathRead));
  EXPECT_EQ(calls, 1);
}

TEST(ConfigFile, ReadingBeginsWithTheDefaultTableAndScales) {
  Settings settings = someSettings();
  prepareForReading(settings, u"/p");
  Settings expected = someSettings();
  expected.shortcutPath = u"/p" + nativePath(u"/nav/res_css/js/shortQrCode.js");
  expected.scaleX = 567;
  expected.scaleY = 567;
  EXPECT_EQ(settings, expected);
}

TEST(ConfigFile, IsWrittenInTheProgramFolderAndOverAnOlderOne) {
  const Scratch folder;
  EXPECT_EQ(configPath(folder.text()), folder.text("config.cfg"));
  writeBytes(folder.text("config.cfg"), std::string(5000, 'x'));
  Journal journal;
  ScriptedQuestions questions(journal);
  EXPECT_TRUE(RecConfig(folder.text(), someSettings(), kFrench, questions));
  EXPECT_EQ(bytesOf(folder.text("config.cfg")), kSomeBytes);
  EXPECT_EQ(folder.entries(), 1u);
}

TEST(ConfigFile, AProgramFolderThatIsMissingHasItsBox) {
  const Scratch folder;
  Journal journal;
  ScriptedQuestions questions(journal);
  questions.answers = {Answer::Ok};
  EXPECT_FALSE(RecConfig(folder.text("manquant"), someSettings(), kFrench, questions));
  EXPECT_EQ(questions.boxes, std::vector<Box>{configWriteFailedBox()});
  EXPECT_EQ(folder.entries(), 0u);
}

TEST(ConfigFile, NoiseNeverDoesHarm) {
  const std::string likely = ",\r\n\" 0123456789;abc\xE9\xC3";
  for (unsigned seed = 0; seed < 10'000; ++seed) {
    std::mt19937 random(seed);
    std::string bytes = random() % 2 == 0 ? kSomeBytes : std::string(random() % 600, '\n');
    for (std::size_t i = 0; i < 20 && !bytes.empty(); ++i) {
      const bool wild = random() % 3 == 0;
      bytes[random() % bytes.size()] =
          wild ? static_cast<char>(random()) : likely[random() % likely.size()];
    }
    Settings settings;
    if (!read(bytes, settings)) continue;
    ASSERT_GE(settings.notifications, 0) << "seed " << seed;
    ASSERT_LE(settings.notifications, 2) << "seed " << seed;
    // What was read can be written, and keeps its 23 lines.
    ASSERT_EQ(splitLines(configBytes(settings, kFrench)).size(), 23u) << "seed " << seed;
  }
}
