// SPDX-License-Identifier: GPL-3.0-or-later
#include <ctime>
#include <gtest/gtest.h>

#include "SyncSupport.h"
#include "support/Processes.h"
#include "sync/DifferenceGrid.h"

namespace {

struct SizeRow {
  std::uint64_t size;
  TextView expected;
};

constexpr SizeRow kSizes[] = {
    {0, u"0 o"},
    {1, u"1 o"},
    {1024, u"1024 o"},
    {1025, u"1,00 Ko"},
    {1536, u"1,50 Ko"},
    {1024 * 1024 - 1, u"1\u00A0024,00 Ko"},
    {1024 * 1024, u"1\u00A0024,00 Ko"},
    {1024 * 1024 + 1, u"1,00 Mo"},
    {1024ull * 1024 * 1024, u"1\u00A0024,00 Mo"},
    {1024ull * 1024 * 1024 + 1, u"1,00 Go"},
    {5000ull * 1024 * 1024 * 1024, u"5\u00A0000,00 Go"},
};

TEST(DifferenceGrid, ASizeIsAShortText) {
  for (const SizeRow& row : kSizes) {
    EXPECT_EQ(synchro::TailleDuFichier(row.size, frenchLocale()), row.expected) << row.size;
  }
}

TEST(DifferenceGrid, TheHeaderAndTheWidths) {
  struct Row {
    TextView header;
    int width;
  };
  constexpr Row kExpected[] = {{u".", 2},       {u"Fichers Source Tavrollo (user_datas)", 4600},
                               {u"Date", 1640}, {u"Poids", 900},
                               {u"", 520},      {u"Fichiers de la sauvegarde (USB...)", 4600},
                               {u"Date", 1640}, {u"Poids", 900}};
  ASSERT_EQ(kGridColumns.size(), std::size(kExpected));
  for (std::size_t i = 0; i < kGridColumns.size(); ++i) {
    EXPECT_EQ(kGridColumns[i].header, kExpected[i].header);
    EXPECT_EQ(kGridColumns[i].width, kExpected[i].width);
  }
}

class GridRowTest : public ::testing::Test {
 protected:
  GridRow shown(SyncAction action, std::uint32_t ofSource, std::uint32_t ofBackup) const {
    return gridRow(source, backup, {.action = action, .source = ofSource, .backup = ofBackup},
                   frenchLocale());
  }

  const Variable zone{"TZ", "UTC"};
  const Listing source = listingOf({{"docs/Plan.pdf", 1'000'000'000}});
  const Listing backup = listingOf({{"docs/plan.pdf", 1'000'000'010}});
  const Text sourceDate = u"09/09/2001 01:46:40";
  const Text backupDate = u"09/09/2001 01:46:50";
};

TEST_F(GridRowTest, AFileOfTheSourceAlone) {
  const GridRow row = shown(SyncAction::NewInSource, 0, kNoFile);
  EXPECT_EQ(row.cells,
            (std::array<Text, 8>{u"0", nativePath(u"docs/Plan.pdf"), sourceDate, u"1 o"}));
  EXPECT_EQ(row.picture, u"flecheDn");
  EXPECT_EQ(row.pictureInWords, u"Nouveau, à copier vers la sauvegarde");
  EXPECT_EQ(row.emphasised, kNoColumn);
}

TEST_F(GridRowTest, ANewerSourceOverwritesTheBackup) {
  const GridRow row = shown(SyncAction::SourceNewer, 0, 0);
  EXPECT_EQ(row.cells,
            (std::array<Text, 8>{u"1", nativePath(u"docs/Plan.pdf"), sourceDate, u"1 o", u"",
                                 nativePath(u"docs/plan.pdf"), backupDate, u"1 o"}));
  EXPECT_EQ(row.picture, u"flecheD");
  EXPECT_EQ(row.pictureInWords, u"Plus récent, à copier vers la sauvegarde");
  EXPECT_EQ(row.emphasised, 5);
}

TEST_F(GridRowTest, AFileOfTheBackupAlone) {
  const GridRow row = shown(SyncAction::NewInBackup, kNoFile, 0);
  EXPECT_EQ(row.cells, (std::array<Text, 8>{u"2", u"", u"", u"", u"", nativePath(u"docs/plan.pdf"),
                                            backupDate, u"1 o"}));
  EXPECT_EQ(row.picture, u"flecheGn");
  EXPECT_EQ(row.pictureInWords, u"Nouveau, à copier depuis la sauvegarde");
  EXPECT_EQ(row.emphasised, kNoColumn);
}

TEST_F(GridRowTest, ANewerBackupOverwritesTheSource) {
  const GridRow row = shown(SyncAction::BackupNewer, 0, 0);
  EXPECT_EQ(row.cells,
            (std::array<Text, 8>{u"3", nativePath(u"docs/Plan.pdf"), sourceDate, u"1 o", u"",
                                 nativePath(u"docs/plan.pdf"), backupDate, u"1 o"}));
  EXPECT_EQ(row.picture, u"flecheG");
  EXPECT_EQ(row.pictureInWords, u"Plus récent, à copier depuis la sauvegarde");
  EXPECT_EQ(row.emphasised, 1);
}

}  // namespace
