// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include "platform/linux/DesktopEntry.h"
#include "platform/linux/Process.h"
#include "platform/linux/Programs.h"
#include "platform/linux/XdgAutostart.h"
#include "support/Processes.h"

namespace {

namespace fs = std::filesystem;

constexpr const char* kOwn = "own/autostart/tavrollo.desktop";
constexpr const char* kShared = "shared/autostart/tavrollo.desktop";

class XdgAutostartTest : public ::testing::Test {
 protected:
  XdgAutostartTest() : program_(scratch.script("bin/tavrollo", "")) {}

  XdgAutostart autostart() const {
    return {{scratch.text("own"), {scratch.text("none"), scratch.text("shared")}}, {program_}};
  }
  std::string entry(const std::string& lines) const {
    return "[Desktop Entry]\nType=Application\nName=T\nExec=" + program_ + "\n" + lines;
  }
  bool isOn() const { return autostart().isOn(); }
  Failure set(bool on) const { return autostart().set(on); }
  bool isThere() const { return fs::exists(scratch.path(kOwn)); }

  Scratch scratch;
  std::string program_;
};

TEST_F(XdgAutostartTest, WithoutALauncherItIsOff) {
  EXPECT_FALSE(isOn());
  EXPECT_FALSE(set(false));
  EXPECT_FALSE(fs::exists(scratch.path("own")));
}

TEST_F(XdgAutostartTest, OnWritesALauncherThatStartsTheProgramAndOffRemovesIt) {
  ASSERT_FALSE(set(true));
  EXPECT_TRUE(isOn());
  const std::optional<DesktopEntry> written = parseDesktopEntry(scratch.read(kOwn), "");
  ASSERT_TRUE(written);
  EXPECT_EQ(desktopEntryCommand(*written, {}), std::vector<std::string>{program_});
  EXPECT_EQ(written->tryExec, program_);
  EXPECT_EQ(written->name, "Tavrollo");
  EXPECT_FALSE(written->terminal);

  ASSERT_FALSE(set(false));
  EXPECT_FALSE(isOn());
  EXPECT_FALSE(isThere());
}

TEST_F(XdgAutostartTest, TheLauncherIsOneByTheDesktopsOwnJudgement) {
  if (programInPath("desktop-file-validate").empty()) GTEST_SKIP() << "desktop-file-utils";
  scratch.write(kShared, entry(""));
  for (const bool on : {true, false}) {
    ASSERT_FALSE(set(on));
    const Captured answer =
        runAndCapture({.arguments = {"desktop-file-validate", scratch.path(kOwn)},
                       .folder = {},
                       .withoutVariables = {}},
                      std::chrono::seconds(10));
    EXPECT_TRUE(answer.succeeded());
    EXPECT_EQ(answer.output, "");
  }
}

TEST_F(XdgAutostartTest, TheDesktopsOwnSwitchCounts) {
  const struct {
    const char* lines;
    bool on;
  } rows[] = {
      {"", true},
      {"Hidden=true\n", false},
      {"Hidden=false\n", true},
      {"X-GNOME-Autostart-enabled=false\n", false},
      {"X-GNOME-Autostart-enabled=true\n", true},
      {"X-GNOME-Autostart-enabled=true\nHidden=true\n", false},
      {"[Other]\nHidden=true\n", true},
      {"TryExec=/gone/tavrollo\n", false},
      {"TryExec=tavrollo\n", true},
  };
  for (const auto& row : rows) {
    scratch.write(kOwn, entry(row.lines));
    EXPECT_EQ(isOn(), row.on) << row.lines;
  }
}

TEST_F(XdgAutostartTest, OnUndoesTheDesktopsSwitchAndKeepsWhatTheUserWrote) {
  for (const char* off : {"Hidden=true\n", "X-GNOME-Autostart-enabled=false\n"}) {
    scratch.write(kOwn, "# mine\n" + entry(std::string(off) + "X-GNOME-Autostart-Delay=10\n") +
                            "\n[Desktop Action a]\nExec=a\n");
    ASSERT_FALSE(set(true));
    EXPECT_TRUE(isOn());
    const std::string bytes = scratch.read(kOwn);
    EXPECT_TRUE(bytes.starts_with("# mine\n[Desktop Entry]\n"));
    EXPECT_NE(bytes.find("\nX-GNOME-Autostart-Delay=10\n"), std::string::npos);
    EXPECT_NE(bytes.find("\n[Desktop Action a]\nExec=a\n"), std::string::npos);
  }
}

TEST_F(XdgAutostartTest, OnStartsThisProgramWhereTheLauncherStartedAnother) {
  scratch.write(kOwn, "[Desktop Entry]\nType=Application\nName=T\nExec=/gone/tavrollo --trace\n"
                      "TryExec=/gone/tavrollo\n");
  EXPECT_FALSE(isOn());  // it would start nothing
  ASSERT_FALSE(set(true));
  EXPECT_TRUE(isOn());
  EXPECT_NE(scratch.read(kOwn).find("\nExec=" + program_ + "\n"), std::string::npos);
  EXPECT_EQ(scratch.read(kOwn).find("/gone"), std::string::npos);
}

TEST_F(XdgAutostartTest, WhatIsNoLauncherIsOffAndIsReplaced) {
  for (const char* bytes : {"", "Exec=a\n", "[Other]\nExec=a\n"}) {
    scratch.write(kOwn, bytes);
    EXPECT_FALSE(isOn());
    ASSERT_FALSE(set(true));
    EXPECT_TRUE(isOn());
  }
}

TEST_F(XdgAutostartTest, ALauncherOfTheSystemIsOverruledByOneThatIsHidden) {
  scratch.write(kShared, entry(""));
  EXPECT_TRUE(isOn());
  ASSERT_FALSE(set(false));
  EXPECT_FALSE(isOn());
  EXPECT_NE(scratch.read(kOwn).find("\nHidden=true\n"), std::string::npos);
  ASSERT_FALSE(set(true));
  EXPECT_TRUE(isOn());
  EXPECT_EQ(scratch.read(kShared), entry(""));
}

TEST_F(XdgAutostartTest, TheUsersLauncherStandsForThatOfTheSystem) {
  scratch.write(kShared, entry(""));
  scratch.write(kOwn, entry("Hidden=true\n"));
  EXPECT_FALSE(isOn());
  scratch.write(kOwn, "nothing that counts");
  EXPECT_FALSE(isOn());
}

TEST_F(XdgAutostartTest, AFolderThatCannotBeMadeIsAFailure) {
  scratch.write("own", "a file");
  const Failure failure = set(true);
  EXPECT_NE(failure.number, 0);
  EXPECT_NE(failure.description.find(scratch.text(kOwn)), Text::npos);
}

TEST_F(XdgAutostartTest, ALauncherThatCannotBeRemovedIsAFailure) {
  scratch.write(kOwn, entry(""));
  ::chmod(scratch.path().c_str(), 0755);
  ::chmod(scratch.path("own/autostart").c_str(), 0555);
  EXPECT_EQ(inChildWithoutRights([&] { return set(false).number == 0 ? 1 : 0; }), 0);
  EXPECT_TRUE(isThere());
  ::chmod(scratch.path("own/autostart").c_str(), 0755);
}

// Every word comes back as it was when the desktop splits the line.
TEST(ExecValue, IsSplitIntoTheSameWords) {
  const std::vector<std::vector<std::string>> commands = {
      {"/usr/bin/tavrollo"},
      {"/opt/un dossier/tavrollo", "--program-folder", "/home/é/Mes \"pages\""},
      {"/a/100%/t", "$HOME", "`x`", "back\\slash", "it's", "semi;colon", "a&b|c<d>e*f?g#h(i)"},
      {"/t", "tab\there", "line\nbreak", "%f", "=", "~"},
  };
  for (const std::vector<std::string>& command : commands) {
    const std::string bytes =
        "[Desktop Entry]\nType=Application\nExec=" + execValue(command) + "\n";
    const std::optional<DesktopEntry> entry = parseDesktopEntry(bytes, "");
    ASSERT_TRUE(entry);
    EXPECT_EQ(desktopEntryCommand(*entry, {}), command) << bytes;
  }
  EXPECT_EQ(execValue({"/usr/bin/tavrollo", "--trace"}), "/usr/bin/tavrollo --trace");
}

TEST(WithDesktopKey, SetsOneKeyOfTheOneGroup) {
  EXPECT_EQ(withDesktopKey("[Desktop Entry]\nA=1\nHidden = x\nHidden[fr]=y\n[B]\nHidden=z",
                           "Hidden", "true"),
            "[Desktop Entry]\nHidden=true\nA=1\nHidden[fr]=y\n[B]\nHidden=z\n");
  EXPECT_EQ(withDesktopKey("[Desktop Entry]\n# Hidden=1\n", "Hidden", "true"),
            "[Desktop Entry]\nHidden=true\n# Hidden=1\n");
}

TEST(XdgConfigFolders, AreTheEnvironmentsElseTheUsualOnes) {
  {
    const Variable home("HOME", "/home/a");
    const Variable own("XDG_CONFIG_HOME", std::nullopt);
    const Variable shared("XDG_CONFIG_DIRS", std::nullopt);
    EXPECT_EQ(xdgConfigFolders().own, u"/home/a/.config");
    EXPECT_EQ(xdgConfigFolders().shared, std::vector<Text>{u"/etc/xdg"});
  }
  const Variable own("XDG_CONFIG_HOME", "/c");
  const Variable shared("XDG_CONFIG_DIRS", "/x::/y");
  EXPECT_EQ(xdgConfigFolders().own, u"/c");
  EXPECT_EQ(xdgConfigFolders().shared, (std::vector<Text>{u"/x", u"/y"}));
}

}  // namespace
