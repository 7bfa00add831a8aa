// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include "platform/linux/DesktopEntry.h"
#include "support/Processes.h"

namespace {

using Words = std::vector<std::string>;

DesktopEntry application(const std::string& exec) {
  return {.type = "Application",
          .name = "Éditeur de texte",
          .icon = "pen",
          .exec = exec,
          .tryExec = {},
          .path = "/usr/share/applications/a.desktop"};
}

TEST(DesktopEntry, TheMainGroupIsRead) {
  const auto entry = parseDesktopEntry("# a comment\n"
                                       "[Other]\nExec=wrong\n"
                                       "[Desktop Entry]\r\n"
                                       "Type=Application\n"
                                       "Name = Editor\n"
                                       "Name[fr]=Éditeur\n"
                                       "#Exec=commented\n"
                                       "Exec=edit %f\n"
                                       "Icon=pen\nTryExec=edit\nTerminal=true\nNoDisplay=true\n"
                                       "no equals sign\n"
                                       "[Desktop Action new]\nExec=wrong\nHidden=true\n",
                                       "/a.desktop");
  ASSERT_TRUE(entry);
  EXPECT_EQ(entry->type, "Application");
  EXPECT_EQ(entry->name, "Editor");
  EXPECT_EQ(entry->exec, "edit %f");
  EXPECT_EQ(entry->icon, "pen");
  EXPECT_EQ(entry->tryExec, "edit");
  EXPECT_TRUE(entry->terminal);
  EXPECT_TRUE(entry->noDisplay);
  EXPECT_FALSE(entry->hidden);
  EXPECT_EQ(entry->path, "/a.desktop");
}

TEST(DesktopEntry, WithoutTheMainGroupThereIsNone) {
  EXPECT_FALSE(parseDesktopEntry("", "a"));
  EXPECT_FALSE(parseDesktopEntry("[Other]\nExec=a\n", "a"));
}

TEST(DesktopEntry, EscapesOfAValueAreUndone) {
  const auto entry = parseDesktopEntry(
      "[Desktop Entry]\nName=a\\sb\\tc\\nd\\re\\\\f\\x\nExec=a \"b\\\\\\\\c\"\n", "a");
  ASSERT_TRUE(entry);
  EXPECT_EQ(entry->name, "a b\tc\nd\re\\f\\x");
  EXPECT_EQ(entry->exec, "a \"b\\\\c\"");
}

struct Row {
  const char* exec;
  Words files;
  Words expected;
};

const Row kRows[] = {
    {"edit %f", {"/a b"}, {"edit", "/a b"}},
    {"edit %F", {"/a", "/b"}, {"edit", "/a", "/b"}},
    {"edit %u", {"/a"}, {"edit", "/a"}},
    {"edit %U --last", {"/a", "/b"}, {"edit", "/a", "/b", "--last"}},
    {"edit %f", {}, {"edit"}},
    {"edit %F %U", {}, {"edit"}},
    {"edit --file=%f", {"/a"}, {"edit", "--file=/a"}},
    {"edit", {"/a"}, {"edit", "/a"}},
    {"edit %i %c %k",
     {},
     {"edit", "--icon", "pen", "Éditeur de texte", "/usr/share/applications/a.desktop"}},
    {"edit 100%%", {}, {"edit", "100%"}},
    {"edit %d %D %n %N %v %m", {}, {"edit"}},
    {"\"/opt/my editor/run\" \"a \\\"b\\\" \\$c\" %f",
     {"/x"},
     {"/opt/my editor/run", "a \"b\" $c", "/x"}},
    {"edit \"\" %f", {"/x"}, {"edit", "", "/x"}},
    {"edit %f", {"/50%f"}, {"edit", "/50%f"}},
    {"edit %f", {"/a\xFF"}, {"edit", "/a\xFF"}},
};

TEST(DesktopEntry, TheCommandIsExpanded) {
  for (const Row& row : kRows) {
    const auto command = desktopEntryCommand(application(row.exec), row.files);
    ASSERT_TRUE(command) << row.exec;
    EXPECT_EQ(*command, row.expected) << row.exec;
  }
}

TEST(DesktopEntry, WithoutAnIconThereIsNoIconOption) {
  DesktopEntry entry = application("edit %i");
  entry.icon.clear();
  EXPECT_EQ(desktopEntryCommand(entry, {}), Words{"edit"});
}

TEST(DesktopEntry, WhatCannotBeStartedHasNoCommand) {
  for (const char* exec : {"", "   ", "\"\" %f", "edit %z", "edit 100%"}) {
    EXPECT_FALSE(desktopEntryCommand(application(exec), {"/a"})) << exec;
  }
  DesktopEntry entry = application("edit");
  entry.hidden = true;
  EXPECT_FALSE(desktopEntryCommand(entry, {}));
  entry = application("edit");
  entry.type = "Link";
  EXPECT_FALSE(desktopEntryCommand(entry, {}));
}

TEST(DesktopEntry, WhatIsInNoMenuStillOpensFiles) {
  DesktopEntry entry = application("edit");
  entry.noDisplay = true;
  EXPECT_TRUE(desktopEntryCommand(entry, {}));
}

TEST(DesktopEntry, AnIdIsFoundInTheFirstFolderThatHasIt) {
  const Scratch scratch;
  scratch.write("own/applications/a.desktop", "");
  scratch.write("shared/applications/a.desktop", "");
  scratch.write("shared/applications/b.desktop", "");
  const Words folders = {scratch.path("missing"), scratch.path("own"), scratch.path("shared")};
  EXPECT_EQ(findDesktopEntry("a.desktop", folders), scratch.path("own/applications/a.desktop"));
  EXPECT_EQ(findDesktopEntry("b.desktop", folders), scratch.path("shared/applications/b.desktop"));
  EXPECT_EQ(findDesktopEntry("c.desktop", folders), "");
  EXPECT_EQ(findDesktopEntry("", folders), "");
  EXPECT_EQ(findDesktopEntry("../applications/a.desktop", folders), "");
}

TEST(DesktopEntry, ADashOfAnIdMayBeASubFolder) {
  const Scratch scratch;
  scratch.write("d/applications/kde/text-edit.desktop", "");
  scratch.write("d/applications/x-y/z/e.desktop", "");
  scratch.write("d/applications/plain-dash.desktop", "");
  const Words folders = {scratch.path("d")};
  const std::string base = scratch.path("d/applications/");
  EXPECT_EQ(findDesktopEntry("kde-text-edit.desktop", folders), base + "kde/text-edit.desktop");
  EXPECT_EQ(findDesktopEntry("x-y-z-e.desktop", folders), base + "x-y/z/e.desktop");
  EXPECT_EQ(findDesktopEntry("plain-dash.desktop", folders), base + "plain-dash.desktop");
  EXPECT_EQ(findDesktopEntry("-kde-text.desktop", folders), "");
}

TEST(DesktopEntry, TheDataFoldersComeFromTheEnvironment) {
  const Variable home("HOME", "/home/a");
  {
    const Variable own("XDG_DATA_HOME", std::nullopt);
    const Variable shared("XDG_DATA_DIRS", std::nullopt);
    EXPECT_EQ(desktopDataFolders(),
              (Words{"/home/a/.local/share", "/usr/local/share", "/usr/share"}));
  }
  const Variable own("XDG_DATA_HOME", "/own");
  const Variable shared("XDG_DATA_DIRS", "/one::/two");
  EXPECT_EQ(desktopDataFolders(), (Words{"/own", "/one", "/two"}));
}

}  // namespace
