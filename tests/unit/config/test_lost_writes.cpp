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
#include "support/Doubles.h"
#include "support/Scratch.h"

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
void inAReadOnlyFolder(const Scratch& folder, const std::function<void()>& action) {
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
    const std::function<void(const Scratch&, const std::function<void()>&)>& way) {
  const Scratch folder;
  writeBytes(folder.text("config.cfg"), "l'ancien");
  writeBytes(folder.text("table.js"), "l'ancienne");
  Settings settings;
  settings.shortcutPath = folder.text("table.js");
  ShortcutTable table;
  table.load(1, {{u"000000000", u"nom", u"adresse"}});
  Journal journal;
  ScriptedQuestions questions(journal);
  questions.answers = {Answer::Ok, Answer::Ok};

  way(folder, [&] {
    EXPECT_FALSE(RecConfig(folder.text(), settings, frenchLocale(), questions));
    EXPECT_FALSE(RecShortQrCode(settings, table, questions));
  });
  EXPECT_EQ(questions.boxes, std::vector<Box>({configWriteFailedBox(), shortcutsWriteFailedBox()}));
  EXPECT_EQ(bytesOf(folder.text("config.cfg")), "l'ancien");
  EXPECT_EQ(bytesOf(folder.text("table.js")), "l'ancienne");
  EXPECT_EQ(folder.entries(), 2u);

  // Where nothing stands in the way any more, the same call works.
  EXPECT_TRUE(RecConfig(folder.text(), settings, frenchLocale(), questions));
  EXPECT_EQ(bytesOf(folder.text("config.cfg")), configBytes(settings, frenchLocale()));
}

}  // namespace

TEST(LostWrites, AFullDiskLeavesTheOldFilesWhole) {
  expectOldFilesAfterWriting(
      [](const Scratch&, const std::function<void()>& action) { onAFullDisk(action); });
}

TEST(LostWrites, AReadOnlyFolderLeavesTheOldFilesWhole) {
  expectOldFilesAfterWriting(inAReadOnlyFolder);
}

TEST(LostWrites, ATableThatMayNotBeReadLeadsToTheQuestion) {
  const Scratch folder;
  Settings settings;
  settings.shortcutPath = folder.text("table.js");
  ShortcutTable written;
  written.load(0, {});
  writeBytes(settings.shortcutPath, shortcutBytes(written));
  std::filesystem::permissions(toPath(settings.shortcutPath), std::filesystem::perms::none);
  ShortcutTable table;
  Journal journal;
  ScriptedQuestions questions(journal);
  questions.answers = {Answer::No, Answer::Ok};
  inAReadOnlyFolder(folder, [&] {
    EXPECT_EQ(loadShortcuts(settings, table, folder.text(), frenchLocale(), questions),
              ShortcutLoad::Ended);
  });
  EXPECT_EQ(questions.boxes, (std::vector<Box>{createShortcutsBox(), shortcutsMissingBox()}));
}
