// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include "config/ShortcutFile.h"
#include "platform/Version.h"
#include "unit/tools/RunTavrolloctl.h"

namespace {

// A table whose listing does not fit in any buffer on its way.
std::string bigTable() {
  ShortcutTable table;
  table.load(100'000, std::vector<Shortcut>(20'000, {u"000000001", u"nom", u"adresse"}));
  return shortcutBytes(table);
}

bool isOneLine(const std::string& text) { return text.find('\n') == text.size() - 1; }

int closedPipe() {
  int ends[2] = {-1, -1};
  EXPECT_EQ(pipe(ends), 0);
  close(ends[0]);
  return ends[1];
}

}  // namespace

TEST(Tavrolloctl, HelpNamesEveryVerbOnStandardOutput) {
  const Outcome run = runTavrolloctl({"--help"});
  EXPECT_EQ(run.status, 0);
  EXPECT_TRUE(run.out.starts_with("Usage : tavrolloctl VERBE [ARGUMENTS]\n"));
  for (const std::string verb : {"codebar", "config", "doctor", "shortcuts"}) {
    EXPECT_NE(run.out.find("\n  " + verb + " "), std::string::npos) << verb;
  }
  EXPECT_EQ(run.err, "");
}

TEST(Tavrolloctl, SaysItsVersion) {
  const Outcome run = runTavrolloctl({"--version"});
  EXPECT_EQ(run.status, 0);
  EXPECT_EQ(run.out, std::string("tavrolloctl ") + kVersionText + "\n");
  EXPECT_EQ(run.err, "");
}

TEST(Tavrolloctl, AWrongUsageShowsTheUsageOnStandardError) {
  const std::vector<std::string> rows[] = {
      {}, {"inconnu"}, {""}, {"CONFIG"}, {"--inconnu"}, {"--help", "config"}, {"--version", "x"}};
  for (const auto& arguments : rows) {
    const Outcome run = runTavrolloctl(arguments);
    EXPECT_EQ(run.status, 2);
    EXPECT_EQ(run.out, "");
    EXPECT_EQ(run.err, runTavrolloctl({"--help"}).out);
  }
}

TEST(Tavrolloctl, EachVerbHasItsOwnUsage) {
  for (const std::string verb : {"config", "shortcuts"}) {
    const Outcome help = runTavrolloctl({verb, "--help"});
    EXPECT_EQ(help.status, 0);
    EXPECT_TRUE(help.out.starts_with("Usage : tavrolloctl " + verb + " FICHIER\n"));
    EXPECT_EQ(help.err, "");
    const std::vector<std::string> rows[] = {
        {verb}, {verb, ""}, {verb, "-x"}, {verb, "a", "b"}, {verb, "--help", "a"}};
    for (const auto& arguments : rows) {
      const Outcome run = runTavrolloctl(arguments);
      EXPECT_EQ(run.status, 2);
      EXPECT_EQ(run.out, "");
      EXPECT_EQ(run.err, help.out);
    }
  }
}

TEST(Tavrolloctl, AFileThatCannotBeReadIsOneSentence) {
  const Scratch folder;
  for (const std::string verb : {"config", "shortcuts"}) {
    for (const Text& path : {folder.text("manquant"), folder.text()}) {
      const Outcome run = runTavrolloctl({verb, argument(path)});
      EXPECT_EQ(run.status, 2);
      EXPECT_EQ(run.out, "");
      EXPECT_TRUE(run.err.starts_with("Le fichier " + argument(path) + " ne peut pas être lu : "))
          << run.err;
      EXPECT_TRUE(isOneLine(run.err)) << run.err;
    }
  }
}

TEST(Tavrolloctl, AFullDiskIsAFailure) {
  const Scratch folder;
  writeBytes(folder.text("table.js"), bigTable());
  const std::vector<std::string> rows[] = {
      {"shortcuts", argument(folder.text("table.js"))}, {"--version"}, {"--help"}};
  for (const auto& arguments : rows) {
    const Outcome run = runTavrolloctlInto(open("/dev/full", O_WRONLY | O_CLOEXEC), arguments);
    EXPECT_EQ(run.status, 2);
    EXPECT_EQ(run.err, "Le résultat n'a pas pu être écrit sur la sortie standard.\n");
  }
}

TEST(Tavrolloctl, AClosedPipeIsAFailureAndNoCrash) {
  const Scratch folder;
  writeBytes(folder.text("table.js"), bigTable());
  const Outcome run =
      runTavrolloctlInto(closedPipe(), {"shortcuts", argument(folder.text("table.js"))});
  EXPECT_EQ(run.status, 2);
  EXPECT_EQ(run.err, "Le résultat n'a pas pu être écrit sur la sortie standard.\n");
}
