// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/linux/Equivalents.h"

#include <fstream>
#include <gtest/gtest.h>
#include <regex>
#include <set>

#include "support/Processes.h"
#include "text/Utf.h"
#include "tray/Launchers.h"

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
    CommandKind kind;
    Handler handler;
    std::string_view mimeType;
    Names programs;
  };
  const Row rows[] = {
      {u"notepad",
       CommandKind::OnePath,
       Handler::First,
       "text/plain",
       {"gnome-text-editor", "gedit", "kate", "mousepad", "xed", "pluma", "featherpad"}},
      {u"write", CommandKind::OnePath, Handler::Last, "application/rtf", {"lowriter"}},
      {u"word.basic", CommandKind::OnePath, Handler::Last, "application/msword", {"lowriter"}},
      {u"explorer", CommandKind::OnePath, Handler::Alone, "inode/directory", {"xdg-open"}},
      {u"charmap",
       CommandKind::Words,
       Handler::None,
       "",
       {"gucharmap", "gnome-characters", "kcharselect"}},
      {u"control",
       CommandKind::Words,
       Handler::None,
       "",
       {"gnome-control-center", "systemsettings", "xfce4-settings-manager", "lxqt-config",
        "mate-control-center"}},
      {u"cmd.exe",
       CommandKind::Words,
       Handler::None,
       "",
       {"x-terminal-emulator", "gnome-terminal", "kgx", "ptyxis", "konsole", "xfce4-terminal",
        "mate-terminal", "lxterminal", "qterminal", "tilix", "terminator", "kitty", "alacritty",
        "urxvt", "xterm", "foot"}},
      {u"regedit", CommandKind::Words, Handler::None, "", {"dconf-editor"}},
      {u"winver", CommandKind::Box, Handler::None, "", {}},
  };
  EXPECT_EQ(equivalentRows().size(), std::size(rows));
  for (const Row& expected : rows) {
    const EquivalentRow* row = equivalentRow(expected.command);
    ASSERT_TRUE(row) << toUtf8(expected.command);
    EXPECT_EQ(row->kind, expected.kind) << toUtf8(expected.command);
    EXPECT_EQ(row->handler, expected.handler) << toUtf8(expected.command);
    EXPECT_EQ(row->mimeType, expected.mimeType) << toUtf8(expected.command);
    EXPECT_EQ(programsOf(*row), expected.programs) << toUtf8(expected.command);
  }
  EXPECT_FALSE(equivalentRow(u"cmd"));
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

TEST_F(EquivalentsTest, TheHelpPageTellsEveryKeyOfTheUsersOwnPrograms) {
  std::set<std::string> keys{toUtf8(launchers::kSpreadsheet)};
  for (const EquivalentRow& row : equivalentRows()) {
    const bool word = row.command == kWordBasic;
    keys.insert(toUtf8(word ? launchers::kWordProcessor : launcherKey(row.command)));
  }
  std::ifstream file(TAVROLLO_HELP_PAGE, std::ios::binary);
  const std::string page{std::istreambuf_iterator<char>(file), {}};
  const std::size_t begin = page.find("aria-label=\"Tableau des clés de lanceurs.cfg\"");
  ASSERT_NE(begin, std::string::npos);
  const std::string table = page.substr(begin, page.find("</table>", begin) - begin);
  std::set<std::string> told;
  const std::regex head("<th scope=\"row\">(.*?)</th>");
  const std::regex key("<code>(.*?)</code>");
  for (std::sregex_iterator row(table.begin(), table.end(), head), end; row != end; ++row) {
    const std::string cell = (*row)[1];
    for (std::sregex_iterator each(cell.begin(), cell.end(), key); each != end; ++each) {
      EXPECT_TRUE(told.insert((*each)[1]).second) << (*each)[1] << " is told twice";
    }
  }
  EXPECT_EQ(told, keys);
}

TEST_F(EquivalentsTest, WhatIsMissingIsNamedWithThePackageThatBringsIt) {
  const auto missing = [](TextView command) {
    return missingText(equivalentRow(command)->programs);
  };
  EXPECT_EQ(missing(u"regedit"), u"dconf-editor (paquet dconf-editor)");
  EXPECT_EQ(missing(u"write"), u"lowriter (paquet libreoffice-writer)");
  EXPECT_EQ(missing(u"explorer"), u"xdg-open (paquet xdg-utils)");
  EXPECT_EQ(missing(u"charmap"),
            u"gucharmap (paquet gucharmap), gnome-characters (paquet gnome-characters) ou "
            u"kcharselect (paquet kcharselect)");
  EXPECT_EQ(missing(u"cmd.exe"),
            u"x-terminal-emulator (paquet xterm), gnome-terminal (paquet gnome-terminal), kgx "
            u"(paquet gnome-console), ptyxis (paquet ptyxis) ou konsole (paquet konsole)")
      << "a box names five at most";
  EXPECT_TRUE(
      missing(u"control").ends_with(u"ou mate-control-center (paquet mate-control-center)"));
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
       {Row{"foot", "-e"}, Row{"xterm", "-e"}, Row{"urxvt", "-e"}, Row{"alacritty", "-e"},
        Row{"kitty", "-e"}, Row{"terminator", "-x"}, Row{"tilix", "-e"}, Row{"qterminal", "-e"},
        Row{"lxterminal", "-e"}, Row{"mate-terminal", "-x"}, Row{"xfce4-terminal", "-x"},
        Row{"konsole", "-e"}, Row{"ptyxis", "--"}, Row{"kgx", "--"}, Row{"gnome-terminal", "--"},
        Row{"x-terminal-emulator", "-e"}}) {
    install(row.name);
    EXPECT_EQ(terminalCommand(), (std::vector<std::string>{row.name, row.option}));
  }
}

}  // namespace
