// SPDX-License-Identifier: GPL-3.0-or-later
#include <clocale>
#include <gtest/gtest.h>
#include <pwd.h>
#include <sys/utsname.h>

#include "platform/System.h"
#include "platform/linux/KernelRelease.h"
#include "platform/linux/RuntimeFolder.h"
#include "support/Processes.h"
#include "text/Utf.h"

// The C library keeps a copy of LOCPATH at every newlocale; only these tests set it.
extern "C" const char* __lsan_default_suppressions();
extern "C" const char* __lsan_default_suppressions() { return "leak:argz_add_sep"; }

namespace {

mode_t modeOf(const std::string& path) {
  struct stat status {};
  ::stat(path.c_str(), &status);
  return status.st_mode & 07777;
}

TEST(System, AnUnsetOrEmptyVariableIsNothing) {
  const Variable unset("TAVROLLO_TEST_A", std::nullopt);
  const Variable empty("TAVROLLO_TEST_B", "");
  const Variable set("TAVROLLO_TEST_C", "é \xFF");
  EXPECT_FALSE(environmentVariable("TAVROLLO_TEST_A"));
  EXPECT_FALSE(environmentVariable("TAVROLLO_TEST_B"));
  ASSERT_TRUE(environmentVariable("TAVROLLO_TEST_C"));
  EXPECT_EQ(toUtf8Lossless(*environmentVariable("TAVROLLO_TEST_C")), "é \xFF");
}

TEST(System, TheCurrentFolderIsWhereWeAre) {
  EXPECT_EQ(currentFolder(), fromPath(std::filesystem::current_path()));
}

TEST(System, ACurrentFolderThatIsGoneIsEmpty) {
  const std::filesystem::path before = std::filesystem::current_path();
  {
    const Scratch scratch;
    std::filesystem::current_path(scratch.path());
  }
  EXPECT_EQ(currentFolder(), u"");
  std::filesystem::current_path(before);
}

TEST(System, TheExecutableIsThisTest) {
  EXPECT_TRUE(executablePath().starts_with(u"/"));
  EXPECT_TRUE(executablePath().ends_with(u"/test_system"));
}

TEST(System, TheHomeFolderHasNoTrailingSeparator) {
  struct Row {
    const char* home;
    const char16_t* expected;
  };
  for (const Row& row :
       {Row{"/home/é", u"/home/é"}, Row{"/home/a//", u"/home/a"}, Row{"/", u"/"}}) {
    const Variable home("HOME", row.home);
    EXPECT_EQ(homeFolder(), row.expected);
  }
}

TEST(System, WithoutHomeTheUserRecordTells) {
  const Variable home("HOME", std::nullopt);
  EXPECT_EQ(homeFolder(), fromPath(::getpwuid(::getuid())->pw_dir));
}

TEST(System, OnlyAFolderThatTakesFilesIsWritable) {
  const Scratch scratch;
  scratch.write("file", "");
  EXPECT_TRUE(isWritableFolder(scratch.text()));
  EXPECT_FALSE(isWritableFolder(scratch.text("file")));
  EXPECT_FALSE(isWritableFolder(scratch.text("missing")));

  const std::string folder = scratch.path("closed");
  std::filesystem::create_directory(folder);
  ::chmod(scratch.path().c_str(), 0755);
  ::chmod(folder.c_str(), 0555);
  EXPECT_EQ(inChildWithoutRights([&] { return isWritableFolder(fromPath(folder)) ? 1 : 0; }), 0);
}

TEST(System, TheVersionIsThatOfTheKernel) {
  const struct {
    std::string_view release;
    SystemVersion version;
  } rows[] = {
      {"6.1.0-13-amd64", {4, 6, 1}},
      {"5.15", {4, 5, 15}},
      {"10.0.22631", {4, 10, 0}},
      {"6", {4, 6, 0}},
      {"6.", {4, 6, 0}},
      {"6-rc1.2", {4, 6, 0}},
      {"", {4, 0, 0}},
      {"new", {4, 0, 0}},
      {"99999999999.1", {4, 0, 1}},
  };
  for (const auto& row : rows) EXPECT_EQ(versionOfRelease(row.release), row.version) << row.release;

  utsname names{};
  ASSERT_EQ(::uname(&names), 0);
  EXPECT_EQ(systemVersion(), versionOfRelease(names.release));
  EXPECT_GT(systemVersion().major, 0u);
}

TEST(System, ADesktopWithoutALocaleIsFrench) {
  for (const char* name : {"", "C", "POSIX", "C.UTF-8", "C.utf8", "xx_XX.UTF-8"}) {
    const Variable all("LC_ALL", name);
    const Variable numeric("LC_NUMERIC", std::nullopt);
    const Variable time("LC_TIME", std::nullopt);
    const Variable language("LANG", std::nullopt);
    EXPECT_TRUE(systemLocale() == frenchLocale()) << name;
  }
}

TEST(System, TheLocaleOfTheDesktopIsTaken) {
  const Scratch scratch;
  const std::string make = "localedef -i en_GB -f UTF-8 '" + scratch.path("en_GB.UTF-8") +
                           "' >/dev/null 2>&1; "
                           "localedef -i fr_FR -f UTF-8 '" +
                           scratch.path("fr_FR.UTF-8") + "' >/dev/null 2>&1";
  if (std::system(make.c_str()) != 0) GTEST_SKIP() << "localedef is not installed";

  const Variable place("LOCPATH", scratch.path());
  const Variable all("LC_ALL", std::nullopt);
  const Variable time("LC_TIME", std::nullopt);
  const Variable language("LANG", "en_GB.UTF-8");
  {
    const Variable numeric("LC_NUMERIC", std::nullopt);
    EXPECT_TRUE(systemLocale() == (LocaleData{u'.', "%d/%m/%y", u','}));
  }
  const Variable numeric("LC_NUMERIC", "fr_FR.UTF-8");
  EXPECT_TRUE(systemLocale() == (LocaleData{u',', "%d/%m/%y", u'\u202F'}));
  const Variable over("LC_ALL", "fr_FR.UTF-8");
  EXPECT_TRUE(systemLocale() == (LocaleData{u',', "%d/%m/%Y", u'\u202F'}));
  EXPECT_STREQ(std::setlocale(LC_ALL, nullptr), "C");
}

TEST(RuntimeFolder, TheSystemsOwnIsTaken) {
  const Scratch scratch;
  const Variable given("XDG_RUNTIME_DIR", scratch.path() + "/");
  EXPECT_EQ(runtimeFolder(), scratch.text());
}

TEST(RuntimeFolder, WithoutAUsableOneAPrivateFolderIsMade) {
  for (const std::optional<std::string>& value :
       {std::optional<std::string>(), std::optional<std::string>("/nowhere/at/all"),
        std::optional<std::string>("relative")}) {
    const Variable given("XDG_RUNTIME_DIR", value);
    const std::string folder = toUtf8Lossless(runtimeFolder());
    EXPECT_EQ(folder, "/tmp/tavrollo-" + std::to_string(::geteuid()));
    EXPECT_EQ(modeOf(folder), 0700u);
  }
}

TEST(RuntimeFolder, TheFolderOfAnotherUserIsNotTaken) {
  const Scratch scratch;
  if (::chown(scratch.path().c_str(), 65534, 65534) != 0) {
    GTEST_SKIP() << "only root can make a folder of another user";
  }
  const Variable given("XDG_RUNTIME_DIR", scratch.path());
  EXPECT_NE(runtimeFolder(), scratch.text());
}

TEST(RuntimeFolder, APrivateFolderIsOursAndClosed) {
  const Scratch scratch;
  EXPECT_TRUE(makePrivateFolder(scratch.path("new")));
  EXPECT_EQ(modeOf(scratch.path("new")), 0700u);

  std::filesystem::create_directory(scratch.path("open"));
  ::chmod(scratch.path("open").c_str(), 0777);
  EXPECT_TRUE(makePrivateFolder(scratch.path("open")));
  EXPECT_EQ(modeOf(scratch.path("open")), 0700u);
}

TEST(RuntimeFolder, ALinkAFileOrAFolderOfAnotherUserIsRefused) {
  const Scratch scratch;
  std::filesystem::create_directory(scratch.path("target"));
  ::symlink("target", scratch.path("link").c_str());
  scratch.write("file", "");
  EXPECT_FALSE(makePrivateFolder(scratch.path("link")));
  EXPECT_FALSE(makePrivateFolder(scratch.path("file")));
  EXPECT_FALSE(makePrivateFolder(scratch.path("missing/below")));

  std::filesystem::create_directory(scratch.path("foreign"));
  if (::chown(scratch.path("foreign").c_str(), 65534, 65534) != 0) {
    GTEST_SKIP() << "only root can make a folder of another user";
  }
  EXPECT_FALSE(makePrivateFolder(scratch.path("foreign")));
}

}  // namespace
