// SPDX-License-Identifier: GPL-3.0-or-later
#include <chrono>
#include <thread>

#include "WindowsSupport.h"
#include "platform/FolderTree.h"

namespace {

class FilesTest : public ::testing::Test {
 protected:
  Scratch scratch;
};

TEST_F(FilesTest, ARegularFileExistsAndItsPathIsTrimmed) {
  scratch.write("a b é.txt", "");
  writeBytes(scratch.text() + u"\\日本.txt", "");
  EXPECT_TRUE(FileExists(scratch.text("a b é.txt")));
  EXPECT_TRUE(FileExists(u"  " + scratch.text("a b é.txt") + u"  "));
  EXPECT_TRUE(FileExists(scratch.text() + u"/日本.txt"));
}

TEST_F(FilesTest, NothingAndAFolderAreNoFiles) {
  for (const Text& path : {Text(), Text(u"   "), scratch.text("missing"), scratch.text()}) {
    EXPECT_FALSE(FileExists(path));
  }
  EXPECT_FALSE(FileExists(u"\\\\.\\NUL"));
}

TEST_F(FilesTest, ANulInAPathDoesNotNameAnotherFile) {
  scratch.write("a", "old");
  const Text path = scratch.text("a") + Text(1, u'\0') + u"b";
  EXPECT_FALSE(FileExists(path));
  EXPECT_FALSE(somethingAt(path));
  EXPECT_FALSE(fileStamp(path));
  EXPECT_TRUE(replaceFile(path, "new"));
  EXPECT_EQ(scratch.read("a"), "old");
}

TEST_F(FilesTest, SomethingStandsWhereverADirectoryEntryIs) {
  scratch.write("a", "");
  EXPECT_TRUE(somethingAt(scratch.text("a")));
  EXPECT_TRUE(somethingAt(scratch.text()));
  EXPECT_FALSE(somethingAt(scratch.text("missing")));
  EXPECT_FALSE(somethingAt(scratch.text("a/below")));
  EXPECT_FALSE(somethingAt(u""));
}

TEST_F(FilesTest, AStampTellsSizeTimesAndIdentity) {
  scratch.write("a", "12345");
  setTime(scratch.text("a"), 10'000'000'000'000'042);
  const std::optional<FileStamp> stamp = fileStamp(scratch.text("a"));
  ASSERT_TRUE(stamp);
  EXPECT_EQ(stamp->size, 5u);
  EXPECT_EQ(stamp->modified, 1'000'000'000'000'004'200);
  EXPECT_EQ(fileStamp(scratch.text("a")), stamp);

  scratch.write("b", "12345");
  setTime(scratch.text("b"), 10'000'000'000'000'042);
  const std::optional<FileStamp> other = fileStamp(scratch.text("b"));
  ASSERT_TRUE(other);
  EXPECT_EQ(other->modified, stamp->modified);
  EXPECT_NE(other->inode, stamp->inode);
  EXPECT_FALSE(fileStamp(scratch.text("missing")));
}

TEST_F(FilesTest, AnOpenFilesStampIsThatOfItsPath) {
  scratch.write("a", "abc");
  SharedFile file;
  ASSERT_FALSE(file.open(scratch.text("a")));
  FileStamp stamp;
  ASSERT_FALSE(file.stamp(stamp));
  EXPECT_EQ(stamp, fileStamp(scratch.text("a")));
}

TEST_F(FilesTest, OpeningTellsWhyItFails) {
  scratch.write("a", "");
  SharedFile file;
  EXPECT_EQ(file.open(scratch.text("missing")).number, 53);
  EXPECT_EQ(file.open(scratch.text("missing/below")).number, 76);
  EXPECT_EQ(file.open(u"").number, 53);
  EXPECT_EQ(file.open(scratch.text()), failures::notRegularFile());
  EXPECT_FALSE(file.isOpen());
}

TEST_F(FilesTest, ReadingStopsOnlyAtTheFilesEnd) {
  scratch.write("a", "0123456789");
  SharedFile file;
  ASSERT_FALSE(file.open(scratch.text("a")));
  std::array<char, 4> bytes{};
  std::size_t count = 0;
  EXPECT_FALSE(file.readAt(3, bytes, count));
  EXPECT_EQ(std::string_view(bytes.data(), count), "3456");
  EXPECT_FALSE(file.readAt(8, bytes, count));
  EXPECT_EQ(std::string_view(bytes.data(), count), "89");
  EXPECT_FALSE(file.readAt(10, bytes, count));
  EXPECT_EQ(count, 0u);
}

TEST_F(FilesTest, AFileThatIsBeingWrittenIsReadAndItsWriterIsNotKeptOut) {
  scratch.write("a", "old");
  const Handle writer =
      openAs(scratch.text("a"), GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE);
  ASSERT_TRUE(writer.isOpen());
  std::string bytes;
  EXPECT_FALSE(readFile(scratch.text("a"), bytes));
  EXPECT_EQ(bytes, "old");

  SharedFile reader;
  ASSERT_FALSE(reader.open(scratch.text("a")));
  EXPECT_TRUE(openAs(scratch.text("a"), GENERIC_WRITE,
                     FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE)
                  .isOpen());
}

TEST_F(FilesTest, AFileThatIsReadCanBeRenamedAndDeletedMeanwhile) {
  scratch.write("a", "bytes");
  SharedFile reader;
  ASSERT_FALSE(reader.open(scratch.text("a")));
  std::filesystem::rename(toPath(scratch.text("a")), toPath(scratch.text("b")));
  EXPECT_TRUE(::DeleteFileW(longPath(scratch.text("b")).c_str()));
  std::array<char, 5> bytes{};
  std::size_t count = 0;
  EXPECT_FALSE(reader.readAt(0, bytes, count));
  EXPECT_EQ(std::string_view(bytes.data(), count), "bytes");
}

TEST_F(FilesTest, AFileIsMadeOrReplacedAndNothingElseIsLeft) {
  EXPECT_FALSE(replaceFile(scratch.text("a"), "one"));
  EXPECT_EQ(scratch.read("a"), "one");
  EXPECT_FALSE(replaceFile(scratch.text("a"), "two\r\n\x1A"));
  EXPECT_EQ(scratch.read("a"), "two\r\n\x1A");
  EXPECT_EQ(scratch.entries(), 1u);
}

TEST_F(FilesTest, AReplacedFileKeepsItsAttributes) {
  scratch.write("a", "old");
  setAttributes(scratch.text("a"), FILE_ATTRIBUTE_HIDDEN);
  EXPECT_FALSE(replaceFile(scratch.text("a"), "new"));
  EXPECT_EQ(scratch.read("a"), "new");
  EXPECT_TRUE((attributesOf(scratch.text("a")) & FILE_ATTRIBUTE_HIDDEN) != 0);
}

TEST_F(FilesTest, AReadOnlyFileOrAFolderIsNotReplaced) {
  scratch.write("a", "old");
  setAttributes(scratch.text("a"), FILE_ATTRIBUTE_READONLY);
  EXPECT_EQ(replaceFile(scratch.text("a"), "new").number, 70);
  EXPECT_EQ(scratch.read("a"), "old");
  setAttributes(scratch.text("a"), FILE_ATTRIBUTE_NORMAL);
  EXPECT_EQ(replaceFile(scratch.text(), "new").number, 75);
  EXPECT_EQ(replaceFile(scratch.text("no/a"), "new").number, 76);
  EXPECT_EQ(scratch.entries(), 1u);
}

TEST_F(FilesTest, WhoSoonLetsGoOfTheOldFileDoesNotKeepItFromBeingReplaced) {
  scratch.write("a", "old");
  SharedFile reader;
  ASSERT_FALSE(reader.open(scratch.text("a")));
  std::thread letsGo([&reader] {
    std::this_thread::sleep_for(std::chrono::milliseconds(50));
    reader = SharedFile();
  });
  EXPECT_FALSE(replaceFile(scratch.text("a"), "new"));
  letsGo.join();
  EXPECT_EQ(scratch.read("a"), "new");
}

TEST_F(FilesTest, AFileThatNobodyMayReplaceNowStaysWhole) {
  scratch.write("a", "old");
  const Handle selfish = openAs(scratch.text("a"), GENERIC_READ, FILE_SHARE_READ);
  ASSERT_TRUE(selfish.isOpen());
  EXPECT_EQ(replaceFile(scratch.text("a"), "new").number, 70);
  EXPECT_EQ(scratch.read("a"), "old");
  EXPECT_EQ(scratch.entries(), 1u);
}

TEST_F(FilesTest, ACopyGoesOnlyWhereNothingStands) {
  const std::string bytes(600'000, 'x');
  scratch.write("a", bytes);
  EXPECT_FALSE(copyFile(scratch.text("a"), scratch.text("b")));
  EXPECT_TRUE(scratch.read("b") == bytes);
  scratch.write("c", "kept");
  EXPECT_EQ(copyFile(scratch.text("a"), scratch.text("c")).number, 58);
  EXPECT_EQ(scratch.read("c"), "kept");
  EXPECT_EQ(copyFile(scratch.text("missing"), scratch.text("d")).number, 53);
  EXPECT_EQ(scratch.entries(), 3u);
}

TEST_F(FilesTest, APathMayBeLongerThanTheOldLimit) {
  FolderTree tree;
  ASSERT_FALSE(tree.open(scratch.text()));
  const NativeName folder =
      NativeName(100, L'a') + L"\\" + NativeName(100, L'b') + L"\\" + NativeName(100, L'c');
  ASSERT_FALSE(tree.makeFolder(folder));
  const Text path = scratch.text() + u"\\" + fromWide(folder) + u"\\file";
  EXPECT_FALSE(replaceFile(path, "bytes"));
  std::string bytes;
  EXPECT_FALSE(readFile(path, bytes));
  EXPECT_EQ(bytes, "bytes");
  EXPECT_TRUE(fileStamp(path));
  EXPECT_TRUE(FileExists(path));
  EXPECT_FALSE(tree.remove(folder + L"\\file"));
  tree = FolderTree();  // which keeps its folders where they are
  for (NativeName left = folder; !left.empty();) {
    ASSERT_TRUE(::RemoveDirectoryW(longPath(scratch.text() + u"\\" + fromWide(left)).c_str()));
    const std::size_t cut = left.rfind(L'\\');
    left = cut == NativeName::npos ? NativeName() : left.substr(0, cut);
  }
}

}  // namespace
