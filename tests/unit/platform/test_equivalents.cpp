// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/linux/Equivalents.h"

#include <gtest/gtest.h>

#include "support/Processes.h"
#include "text/Utf.h"

namespace {

class EquivalentsTest : public ::testing::Test {
 protected:
  void install(std::string_view program) { scratch.script("bin/" + std::string(program), ""); }

  Scratch scratch;
  Variable path{"PATH", scratch.path("bin")};
};

std::vector<std::string_view> programsOf(const EquivalentRow& row) {
  std::vector<std::string_view> programs;
  for (const Equivalent& equivalent : row.programs) programs.push_back(equivalent.program);
  return programs;
}

TEST_F(EquivalentsTest, EveryWindowsCommandHasItsProgramsInTheirOrder) {
  using Names = std::vector<std::string_view>;
  struct Row {
    TextView command;
    Handler handler;
    std::string_view mimeType;
    Names programs;
  };
  const Row rows[] = {
      {u"notepad",
       Handler::First,
       "text/plain",
       {"gnome-text-editor", "gedit", "kate", "mousepad", "xed", "pluma", "featherpad"}},
      {u"write", Handler::Last, "application/rtf", {"lowriter"}},
      {u"word.basic", Handler::Last, "application/msword", {"lowriter"}},
      {u"charmap", Handler::None, "", {"gucharmap", "gnome-characters", "kcharselect"}},
      {u"control",
       Handler::None,
       "",
       {"gnome-control-center", "systemsettings", "xfce4-settings-manager", "lxqt-config",
        "mate-control-center"}},
      {u"cmd.exe",
       Handler::None,
       "",
       {"x-terminal-emulator", "gnome-terminal", "kgx", "ptyxis", "konsole", "xfce4-terminal",
        "mate-terminal", "qterminal", "xterm"}},
      {u"regedit", Handler::None, "", {"dconf-editor"}},
  };
  EXPECT_EQ(equivalentRows().size(), std::size(rows));
  for (const Row& expected : rows) {
    const EquivalentRow* row = equivalentRow(expected.command);
    ASSERT_TRUE(row) << toUtf8(expected.command);
    EXPECT_EQ(row->handler, expected.handler) << toUtf8(expected.command);
    EXPECT_EQ(row->mimeType, expected.mimeType) << toUtf8(expected.command);
    EXPECT_EQ(programsOf(*row), expected.programs) << toUtf8(expected.command);
  }
  EXPECT_FALSE(equivalentRow(u"winver"));
  EXPECT_FALSE(equivalentRow(u""));
}

TEST_F(EquivalentsTest, TheFirstInstalledProgramWins) {
  for (const EquivalentRow& row : equivalentRows()) {
    std::filesystem::remove_all(scratch.path("bin"));
    EXPECT_FALSE(installedEquivalent(row));
    // From the last choice to the first.
    for (auto at = row.programs.rbegin(); at != row.programs.rend(); ++at) {
      install(at->program);
      ASSERT_TRUE(installedEquivalent(row));
      EXPECT_EQ(installedEquivalent(row)->program, at->program);
    }
  }
}

TEST_F(EquivalentsTest, WhatIsMissingIsNamedWithThePackageThatBringsIt) {
  EXPECT_EQ(missingText(*equivalentRow(u"regedit")), u"dconf-editor (paquet dconf-editor)");
  EXPECT_EQ(missingText(*equivalentRow(u"write")), u"lowriter (paquet libreoffice-writer)");
  EXPECT_EQ(missingText(*equivalentRow(u"charmap")),
            u"gucharmap (paquet gucharmap), gnome-characters (paquet gnome-characters) ou "
            u"kcharselect (paquet kcharselect)");
  for (const EquivalentRow& row : equivalentRows()) {
    for (const Equivalent& equivalent : row.programs) EXPECT_FALSE(equivalent.package.empty());
  }
}

TEST_F(EquivalentsTest, AProgramOfTheTerminalIsStartedInTheFirstTerminal) {
  EXPECT_EQ(terminalCommand(), std::vector<std::string>());
  struct Row {
    const char* name;
    const char* option;
  };
  // From the last choice to the first.
  for (const Row& row :
       {Row{"xterm", "-e"}, Row{"qterminal", "-e"}, Row{"mate-terminal", "-x"},
        Row{"xfce4-terminal", "-x"}, Row{"konsole", "-e"}, Row{"ptyxis", "--"}, Row{"kgx", "--"},
        Row{"gnome-terminal", "--"}, Row{"x-terminal-emulator", "-e"}}) {
    install(row.name);
    EXPECT_EQ(terminalCommand(), (std::vector<std::string>{row.name, row.option}));
  }
}

}  // namespace
