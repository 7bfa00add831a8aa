// SPDX-License-Identifier: GPL-3.0-or-later
#include <map>

#include "WindowsSupport.h"
#include "platform/FolderTree.h"

namespace {

using Entries = std::map<NativeName, FolderEntry>;

bool everything(NativeView) { return true; }

class FolderTreeTest : public ::testing::Test {
 protected:
  void SetUp() override { ASSERT_FALSE(tree.open(scratch.text())); }

  Entries read(NativeView folder = {}, const FolderTree::Wants& wants = everything) {
    Entries entries;
    failure = tree.read(folder, wants, [&entries](FolderEntry&& entry) {
      entries[entry.name] = entry;
      return true;
    });
    return entries;
  }

  Scratch scratch;
  FolderTree tree;
  Failure failure;
};

TEST_F(FolderTreeTest, AFolderListsItsFilesAndFolders) {
  scratch.write("a", "12345");
  scratch.makeFolders("sub");
  setTime(scratch.text("a"), 10'000'000'009'999'999);
  const Entries entries = read();
  EXPECT_FALSE(failure);
  ASSERT_EQ(entries.size(), 2u);
  EXPECT_EQ(entries.at(L"a").kind, EntryKind::File);
  EXPECT_EQ(entries.at(L"a").state, (FileState{.modified = 1'000'000'000, .size = 5}));
  EXPECT_EQ(entries.at(L"sub").kind, EntryKind::Folder);
}

TEST_F(FolderTreeTest, WhatIsBelowASecondIsCutOffAlsoBefore1970) {
  scratch.write("old", "");
  setTime(scratch.text("old"), -95'000'000);
  EXPECT_EQ(read().at(L"old").state.modified, -10);
}

TEST_F(FolderTreeTest, AnEmptyFolderIsNoFailure) {
  EXPECT_TRUE(read().empty());
  EXPECT_FALSE(failure);
}

// Half a pair stays too, but no such name can be made under Wine.
TEST_F(FolderTreeTest, NamesStayTheUnitsThatTheyAre) {
  const NativeName names[] = {L"café", L"日本", L"emoji \xD83D\xDE00"};
  for (const NativeName& name : names) writeBytes(scratch.text() + u"\\" + fromWide(name), "");
  const Entries entries = read();
  for (const NativeName& name : names)
    EXPECT_TRUE(entries.contains(name)) << toUtf8(fromWide(name));
  EXPECT_EQ(nativeText(L"half \xD800 pair"), Text(u"half ") + char16_t(0xD800) + u" pair");
}

TEST_F(FolderTreeTest, WhatIsNotWantedIsLeftOutButFoldersNeverAre) {
  scratch.write("a.doc", "");
  scratch.write("b.txt", "");
  scratch.write("sub/c", "");
  const Entries entries = read({}, [](NativeView name) { return name.ends_with(L".doc"); });
  EXPECT_EQ(entries.size(), 2u);
  EXPECT_TRUE(entries.contains(L"a.doc"));
  EXPECT_TRUE(entries.contains(L"sub"));
}

TEST_F(FolderTreeTest, AVisitMayEndTheReading) {
  scratch.write("a", "");
  scratch.write("b", "");
  int visits = 0;
  EXPECT_FALSE(tree.read({}, everything, [&visits](FolderEntry&&) { return ++visits < 1; }));
  EXPECT_EQ(visits, 1);
}

TEST_F(FolderTreeTest, ASubFolderIsReachedByItsPath) {
  scratch.write("sub/deep/file", "");
  EXPECT_TRUE(read(L"sub\\deep").contains(L"file"));
  EXPECT_TRUE(read(L"sub").contains(L"deep"));
  EXPECT_TRUE(read(L"sub\\missing").empty());
  EXPECT_EQ(failure.number, 53);
  read(L"sub\\deep\\file");
  EXPECT_EQ(failure.number, 76);
}

TEST_F(FolderTreeTest, AMissingRootIs76AndIsToldFromOneThatCannotBeOpened) {
  FolderTree other;
  bool missing = false;
  EXPECT_EQ(other.open(scratch.text("missing"), &missing).number, 76);
  EXPECT_TRUE(missing);
  scratch.write("file", "");
  EXPECT_EQ(other.open(scratch.text("file"), &missing).number, 76);
  EXPECT_TRUE(missing);
  EXPECT_EQ(other.open(u"", &missing).number, 76);
  EXPECT_FALSE(other.open(scratch.text() + u"/", &missing));
  EXPECT_FALSE(missing);
}

TEST_F(FolderTreeTest, MissingFoldersAreMade) {
  EXPECT_FALSE(tree.makeFolder(L"a\\b\\c"));
  EXPECT_FALSE(tree.makeFolder(L"a\\b\\c"));
  EXPECT_FALSE(tree.makeFolder(L""));
  EXPECT_TRUE(std::filesystem::is_directory(scratch.path("a/b/c")));
  scratch.write("file", "");
  EXPECT_EQ(tree.makeFolder(L"file\\below").number, 76);
}

TEST_F(FolderTreeTest, AFileIsTakenAwayAlsoAReadOnlyOne) {
  scratch.write("sub/a", "");
  setAttributes(scratch.text("sub/a"), FILE_ATTRIBUTE_READONLY);
  EXPECT_FALSE(tree.remove(L"sub\\a"));
  EXPECT_FALSE(somethingAt(scratch.text("sub/a")));
  EXPECT_EQ(tree.remove(L"sub\\a").number, 53);
  EXPECT_TRUE(tree.remove(L"sub"));
  EXPECT_TRUE(somethingAt(scratch.text("sub")));
}

TEST_F(FolderTreeTest, AnOpenTreeCannotBeRenamedAway) {
  scratch.write("top/a", "");
  FolderTree top;
  ASSERT_FALSE(top.open(scratch.text("top")));
  EXPECT_FALSE(::MoveFileExW(longPath(scratch.text("top")).c_str(),
                             longPath(scratch.text("other")).c_str(), 0));
  top = FolderTree();
  EXPECT_TRUE(::MoveFileExW(longPath(scratch.text("top")).c_str(),
                            longPath(scratch.text("other")).c_str(), 0));
}

}  // namespace
