// SPDX-License-Identifier: GPL-3.0-or-later
// What becomes of the user's files when writing them fails half-way or is not allowed.
#include <gtest/gtest.h>

#include <csignal>
#include <functional>
#include <sys/resource.h>
#include <unistd.h>

#include "config/ConfigBoxes.h"
#include "config/ConfigFile.h"
#include "config/ShortcutFile.h"
#include "config/ShortcutStore.h"
#include "unit/config/TestFolder.h"
#include "unit/config/TestQuestions.h"

namespace {

// Runs `action` while no file may grow beyond 100 bytes, as on a disk that is all but full.
void onAFullDisk(const std::function<void()>& action) {
  std::signal(SIGXFSZ, SIG_IGN);
  rlimit before{};
  ASSERT_EQ(getrlimit(RLIMIT_FSIZE, &before), 0);
  const rlimit tight{100, before.rlim_max};
  ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &tight), 0);
  action();
  ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &before), 0);
}

// Runs `action` while `folder` may be read but not written. The superuser may always write, so it
// becomes nobody for that time.
void inAReadOnlyFolder(const TestFolder& folder, const std::function<void()>& action) {
  constexpr uid_t kNobody = 65534;
  std::filesystem::permissions(folder.path(), std::filesystem::perms(0555));
  const uid_t user = geteuid();
  ASSERT_EQ(seteuid(user == 0 ? kNobody : user), 0);
  action();
  ASSERT_EQ(seteuid(user), 0);
  std::filesystem::permissions(folder.path(), std::filesystem::perms(0755));
}

// Whether the old config.cfg and table are left whole, and alone, after both were written in `way`.
void expectOldFilesAfterWriting(
    const std::function<void(const TestFolder&, const std::function<void()>&)>& way) {
  const TestFolder folder;
  writeBytes(folder / u"config.cfg", "l'ancien");
  writeBytes(folder / u"table.js", "l'ancienne");
  Settings settings;
  settings.shortcutPath = folder / u"table.js";
  ShortcutTable table;
  table.load(1, {{u"000000000", u"nom", u"adresse"}});
  TestQuestions questions;

  way(folder, [&] {
    EXPECT_TRUE(RecConfig(folder.text(), settings, frenchLocale()));
    EXPECT_FALSE(RecShortQrCode(settings, table, questions));
  });
  EXPECT_EQ(questions.shown, std::vector<Box>{shortcutsWriteFailedBox()});
  EXPECT_EQ(bytesOf(folder / u"config.cfg"), "l'ancien");
  EXPECT_EQ(bytesOf(folder / u"table.js"), "l'ancienne");
  EXPECT_EQ(folder.entries(), 2u);

  // Where nothing stands in the way any more, the same call works.
  EXPECT_FALSE(RecConfig(folder.text(), settings, frenchLocale()));
  EXPECT_EQ(bytesOf(folder / u"config.cfg"), configBytes(settings, frenchLocale()));
}

}  // namespace

TEST(LostWrites, AFullDiskLeavesTheOldFilesWhole) {
  expectOldFilesAfterWriting(
      [](const TestFolder&, const std::function<void()>& action) { onAFullDisk(action); });
}

TEST(LostWrites, AReadOnlyFolderLeavesTheOldFilesWhole) {
  expectOldFilesAfterWriting(inAReadOnlyFolder);
}

TEST(LostWrites, ATableThatMayNotBeReadLeadsToTheQuestion) {
  const TestFolder folder;
  Settings settings;
  settings.shortcutPath = folder / u"table.js";
  ShortcutTable written;
  written.load(0, {});
  writeBytes(settings.shortcutPath, shortcutBytes(written));
  std::filesystem::permissions(toPath(settings.shortcutPath), std::filesystem::perms::none);
  ShortcutTable table;
  TestQuestions questions({Answer::No});
  inAReadOnlyFolder(folder, [&] {
    EXPECT_EQ(loadShortcuts(settings, table, folder.text(), frenchLocale(), questions),
              ShortcutLoad::Ended);
  });
  EXPECT_EQ(questions.shown, (std::vector<Box>{createShortcutsBox(), shortcutsMissingBox()}));
}
