// SPDX-License-Identifier: GPL-3.0-or-later
#include <csignal>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/un.h>

#include "platform/Files.h"
#include "support/Processes.h"

namespace {

mode_t modeOf(const std::string& path) {
  struct stat status {};
  ::stat(path.c_str(), &status);
  return status.st_mode & 07777;
}

class FilesTest : public ::testing::Test {
 protected:
  Scratch scratch;
};

TEST_F(FilesTest, ARegularFileExists) {
  scratch.write("a b é.txt", "");
  EXPECT_TRUE(FileExists(scratch.text("a b é.txt")));
}

TEST_F(FilesTest, ThePathOfFileExistsIsTrimmed) {
  scratch.write("a", "");
  EXPECT_TRUE(FileExists(u"  " + scratch.text("a") + u"  "));
}

TEST_F(FilesTest, NothingAFolderOrADanglingLinkIsNoFile) {
  ::symlink("nowhere", scratch.path("dangling").c_str());
  EXPECT_FALSE(FileExists(u""));
  EXPECT_FALSE(FileExists(u"   "));
  EXPECT_FALSE(FileExists(scratch.text("missing")));
  EXPECT_FALSE(FileExists(scratch.text()));
  EXPECT_FALSE(FileExists(scratch.text("dangling")));
}

TEST_F(FilesTest, ALinkToAFileExists) {
  scratch.write("a", "");
  ::symlink("a", scratch.path("link").c_str());
  EXPECT_TRUE(FileExists(scratch.text("link")));
}

TEST_F(FilesTest, APipeASocketAndADeviceAreNoFilesAndDoNotBlock) {
  ASSERT_EQ(::mkfifo(scratch.path("pipe").c_str(), 0644), 0);
  EXPECT_FALSE(FileExists(scratch.text("pipe")));
  SharedFile file;
  EXPECT_EQ(file.open(scratch.text("pipe")), failures::notRegularFile());
  EXPECT_FALSE(file.isOpen());

  const int listener = ::socket(AF_UNIX, SOCK_STREAM, 0);
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  scratch.path("socket").copy(address.sun_path, sizeof address.sun_path - 1);
  ASSERT_EQ(::bind(listener, reinterpret_cast<sockaddr*>(&address), sizeof address), 0);
  EXPECT_FALSE(FileExists(scratch.text("socket")));
  ::close(listener);
  EXPECT_FALSE(FileExists(u"/dev/null"));
}

TEST_F(FilesTest, AFileThatCannotBeOpenedDoesNotExist) {
  scratch.write("closed", "", 0000);
  ::chmod(scratch.path().c_str(), 0755);
  const std::string path = scratch.path("closed");
  EXPECT_EQ(inChildWithoutRights([&] { return FileExists(fromPath(path)) ? 1 : 0; }), 0);
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
  ::symlink("nowhere", scratch.path("dangling").c_str());
  EXPECT_TRUE(somethingAt(scratch.text("a")));
  EXPECT_TRUE(somethingAt(scratch.text()));
  EXPECT_TRUE(somethingAt(scratch.text("dangling")));
  EXPECT_FALSE(somethingAt(scratch.text("missing")));
  EXPECT_FALSE(somethingAt(scratch.text("a/below")));
  EXPECT_FALSE(somethingAt(u""));
}

TEST_F(FilesTest, AStampTellsSizeTimesAndIdentity) {
  const std::string path = scratch.write("a", "12345");
  const timespec times[2] = {{.tv_sec = 5, .tv_nsec = 6}, {.tv_sec = 1000000000, .tv_nsec = 42}};
  ASSERT_EQ(::utimensat(AT_FDCWD, path.c_str(), times, 0), 0);
  const std::optional<FileStamp> stamp = fileStamp(scratch.text("a"));
  ASSERT_TRUE(stamp);
  EXPECT_EQ(stamp->size, 5u);
  EXPECT_EQ(stamp->modified, 1000000000'000000042);
  EXPECT_EQ(fileStamp(scratch.text("a")), stamp);

  scratch.write("b", "12345");
  ASSERT_EQ(::utimensat(AT_FDCWD, scratch.path("b").c_str(), times, 0), 0);
  std::filesystem::rename(scratch.path("b"), path);
  const std::optional<FileStamp> other = fileStamp(scratch.text("a"));
  ASSERT_TRUE(other);
  EXPECT_EQ(other->modified, stamp->modified);
  EXPECT_NE(other->inode, stamp->inode);
  EXPECT_NE(*other, *stamp);
}

TEST_F(FilesTest, NoStampOfAMissingFile) { EXPECT_FALSE(fileStamp(scratch.text("missing"))); }

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
  EXPECT_EQ(file.open(scratch.text("a/below")).number, 76);
  EXPECT_EQ(file.open(scratch.text()), failures::notRegularFile());
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

TEST_F(FilesTest, AnOpenFileTakesNoLockAndRespectsNone) {
  const std::string path = scratch.write("a", "locked");
  const int writer = ::open(path.c_str(), O_RDWR | O_CLOEXEC);
  struct flock lock {};
  lock.l_type = F_WRLCK;
  ASSERT_EQ(::fcntl(writer, F_OFD_SETLK, &lock), 0);
  SharedFile file;
  ASSERT_FALSE(file.open(scratch.text("a")));
  std::array<char, 6> bytes{};
  std::size_t count = 0;
  EXPECT_FALSE(file.readAt(0, bytes, count));
  EXPECT_EQ(count, 6u);
  ::close(writer);
}

TEST_F(FilesTest, AMovedFileStaysOpenOnce) {
  scratch.write("a", "abc");
  SharedFile file;
  ASSERT_FALSE(file.open(scratch.text("a")));
  SharedFile moved = std::move(file);
  SharedFile assigned;
  assigned = std::move(moved);
  std::array<char, 3> bytes{};
  std::size_t count = 0;
  EXPECT_FALSE(assigned.readAt(0, bytes, count));
  EXPECT_EQ(count, 3u);
}

TEST_F(FilesTest, FilesAreNotInheritedByPrograms) {
  scratch.write("a", "");
  SharedFile file;
  ASSERT_FALSE(file.open(scratch.text("a")));
  bool found = false;
  for (const auto& entry : std::filesystem::directory_iterator("/proc/self/fd")) {
    std::error_code error;
    if (std::filesystem::read_symlink(entry.path(), error).native() != scratch.path("a")) continue;
    found = true;
    const int number = std::stoi(entry.path().filename().native());
    EXPECT_EQ(::fcntl(number, F_GETFD) & FD_CLOEXEC, FD_CLOEXEC);
  }
  EXPECT_TRUE(found);
}

TEST_F(FilesTest, ReadFileGivesEveryByte) {
  for (const std::size_t size : {0u, 1u, 4096u, 262144u, 1000003u}) {
    std::string expected(size, '\0');
    for (std::size_t i = 0; i < size; ++i) expected[i] = static_cast<char>(i * 7);
    scratch.write("a", expected);
    std::string bytes;
    EXPECT_FALSE(readFile(scratch.text("a"), bytes));
    EXPECT_EQ(bytes, expected);
  }
}

TEST_F(FilesTest, ReadFileReadsWhatHasNoSizeToTell) {
  std::string bytes;
  EXPECT_FALSE(readFile(u"/proc/self/status", bytes));
  EXPECT_NE(bytes.find("Name:"), std::string::npos);
}

TEST_F(FilesTest, AFailedReadLeavesTheBytesAlone) {
  std::string bytes = "before";
  EXPECT_EQ(readFile(scratch.text("missing"), bytes).number, 53);
  EXPECT_EQ(bytes, "before");
}

TEST_F(FilesTest, ReplaceFileMakesANewFile) {
  EXPECT_FALSE(replaceFile(scratch.text("new é"), "bytes"));
  EXPECT_EQ(scratch.read("new é"), "bytes");
  const mode_t mask = ::umask(0);
  ::umask(mask);
  EXPECT_EQ(modeOf(scratch.path("new é")), 0666 & ~mask);
}

TEST_F(FilesTest, ReplaceFileKeepsTheModeAndLeavesNothingElse) {
  scratch.write("a", "a much longer old text", 0640);
  EXPECT_FALSE(replaceFile(scratch.text("a"), "new"));
  EXPECT_EQ(scratch.read("a"), "new");
  EXPECT_EQ(modeOf(scratch.path("a")), 0640u);
  EXPECT_EQ(scratch.namesIn(), std::vector<std::string>{"a"});
}

TEST_F(FilesTest, ReplaceFileDoesNotWriteIntoTheOldFile) {
  scratch.write("a", "old");
  SharedFile reader;
  ASSERT_FALSE(reader.open(scratch.text("a")));
  EXPECT_FALSE(replaceFile(scratch.text("a"), "new"));
  std::array<char, 3> bytes{};
  std::size_t count = 0;
  EXPECT_FALSE(reader.readAt(0, bytes, count));
  EXPECT_EQ(std::string_view(bytes.data(), count), "old");
}

TEST_F(FilesTest, ReplaceFileKeepsLinksAndReplacesWhatTheyEndAt) {
  scratch.write("deep/target", "old");
  ::symlink("target", scratch.path("deep/second").c_str());
  ::symlink("deep/second", scratch.path("first").c_str());
  EXPECT_FALSE(replaceFile(scratch.text("first"), "new"));
  EXPECT_TRUE(std::filesystem::is_symlink(scratch.path("first")));
  EXPECT_TRUE(std::filesystem::is_symlink(scratch.path("deep/second")));
  EXPECT_EQ(scratch.read("deep/target"), "new");
}

TEST_F(FilesTest, ReplaceFileMakesTheTargetOfADanglingLink) {
  std::filesystem::create_directory(scratch.path("deep"));
  ::symlink("deep/target", scratch.path("link").c_str());
  EXPECT_FALSE(replaceFile(scratch.text("link"), "new"));
  EXPECT_TRUE(std::filesystem::is_symlink(scratch.path("link")));
  EXPECT_EQ(scratch.read("deep/target"), "new");
}

TEST_F(FilesTest, ReplaceFileRefusesWhatIsNoFile) {
  std::filesystem::create_directory(scratch.path("folder"));
  ::symlink("circle", scratch.path("circle").c_str());
  ::mkfifo(scratch.path("pipe").c_str(), 0644);
  EXPECT_EQ(replaceFile(scratch.text("folder"), "x").number, 75);
  EXPECT_TRUE(replaceFile(scratch.text("circle"), "x"));
  EXPECT_EQ(replaceFile(scratch.text("pipe"), "x"), failures::notRegularFile());
  EXPECT_EQ(replaceFile(scratch.text("missing/a"), "x").number, 53);
  EXPECT_TRUE(replaceFile(u"", "x"));
  EXPECT_EQ(scratch.namesIn().size(), 3u);
}

TEST_F(FilesTest, ReplaceFileRefusesAFileThatMayNotBeWritten) {
  scratch.write("a", "old", 0444);
  ::chmod(scratch.path().c_str(), 0777);
  const std::string path = scratch.path("a");
  EXPECT_EQ(inChildWithoutRights([&] { return replaceFile(fromPath(path), "new").number; }), 70);
  EXPECT_EQ(scratch.read("a"), "old");
}

TEST_F(FilesTest, ADiskThatTakesNoMoreLeavesTheOldFileWhole) {
  scratch.write("a", "old");
  const Text path = scratch.text("a");
  EXPECT_NE(inChild([&] {
              ::signal(SIGXFSZ, SIG_IGN);
              const rlimit limit{.rlim_cur = 4096, .rlim_max = 4096};
              ::setrlimit(RLIMIT_FSIZE, &limit);
              return replaceFile(path, std::string(100000, 'n')).number;
            }),
            0);
  EXPECT_EQ(scratch.read("a"), "old");
  EXPECT_EQ(scratch.namesIn(), std::vector<std::string>{"a"});
}

TEST_F(FilesTest, ALeftoverOfAKilledRunIsNoObstacle) {
  scratch.write(".tavrollo-" + std::to_string(::getpid()) + "-0.tmp", "half");
  EXPECT_FALSE(replaceFile(scratch.text("a"), "new"));
  EXPECT_EQ(scratch.read("a"), "new");
}

TEST_F(FilesTest, ReplaceFileTakesTheLongestNameThereIs) {
  const std::string name(255, 'n');
  EXPECT_FALSE(replaceFile(scratch.text(name), "new"));
  EXPECT_EQ(scratch.read(name), "new");
}

TEST_F(FilesTest, CopyFileCopiesEveryByte) {
  for (const std::size_t size : {0u, 1u, 262143u, 262144u, 262145u, 1000003u}) {
    const std::string expected(size, 'x');
    scratch.write("from", expected);
    std::filesystem::remove(scratch.path("to"));
    EXPECT_FALSE(copyFile(scratch.text("from"), scratch.text("to")));
    EXPECT_EQ(scratch.read("to"), expected);
  }
}

TEST_F(FilesTest, CopyFileNeverOverwrites) {
  scratch.write("from", "new");
  scratch.write("to", "old");
  ::symlink("nowhere", scratch.path("dangling").c_str());
  EXPECT_EQ(copyFile(scratch.text("from"), scratch.text("to")).number, 58);
  EXPECT_TRUE(copyFile(scratch.text("from"), scratch.text("dangling")));
  EXPECT_EQ(scratch.read("to"), "old");
  EXPECT_EQ(scratch.namesIn().size(), 3u);
}

TEST_F(FilesTest, CopyFileTellsWhatFails) {
  scratch.write("from", "new");
  EXPECT_EQ(copyFile(scratch.text("missing"), scratch.text("to")).number, 53);
  EXPECT_EQ(copyFile(scratch.text("from"), scratch.text("missing/to")).number, 53);
  EXPECT_FALSE(somethingAt(scratch.text("to")));
}

}  // namespace
