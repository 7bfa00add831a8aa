// SPDX-License-Identifier: GPL-3.0-or-later
#include <windows.h>

#include <memory>
#include <shellapi.h>

#include "WindowsSupport.h"
#include "platform/Processes.h"

namespace {

std::vector<Text> splitAsWindowsDoes(const std::wstring& line) {
  int count = 0;
  const std::unique_ptr<wchar_t*, decltype(&::LocalFree)> words(
      ::CommandLineToArgvW(line.c_str(), &count), &::LocalFree);
  std::vector<Text> split;
  for (int i = 0; i < count; ++i) split.push_back(fromWide(words.get()[i]));
  return split;
}

TEST(Processes, AWordIsQuotedWhereItMustBe) {
  const struct {
    std::wstring word;
    std::wstring quoted;
  } rows[] = {
      {L"a", L"a"},
      {L"C:\\a\\", L"C:\\a\\"},
      {L"", L"\"\""},
      {L"a b", L"\"a b\""},
      {L"a\tb", L"\"a\tb\""},
      {L"C:\\a b\\", L"\"C:\\a b\\\\\""},
      {L"say \"yes\"", L"\"say \\\"yes\\\"\""},
      {L"\\\"", L"\"\\\\\\\"\""},
      {L"a\\\\b c", L"\"a\\\\b c\""},
  };
  for (const auto& row : rows) EXPECT_EQ(quotedWord(row.word), row.quoted);
}

TEST(Processes, ACommandLineIsSplitIntoTheWordsItWasMadeOf) {
  const std::vector<Text> words = {u"C:\\a b\\x.exe",  u"",       u"\\\\",  u"a\\\" b\\",
                                   u"é 日 \U0001F600", u"\"\"\"", u"tab\t", u"--x=\"y z\""};
  EXPECT_EQ(splitAsWindowsDoes(commandLineOf(words)), words);
}

TEST(Processes, AProgramGetsItsArgumentsInUnicode) {
  const Scratch scratch;
  const Text program = helperAs(scratch, "a b/Tavrollo é.exe");
  ASSERT_FALSE(startDetached({program, u"é 日", u"", u"C:\\a b\\", u"\"q\""}));
  EXPECT_EQ(bytesOnceReadable(scratch.text("a b/started")), "é 日\n\nC:\\a b\\\n\"q\"\n");
}

TEST(Processes, AProgramThatIsMissingIsNamed) {
  const Scratch scratch;
  const Failure failure = startDetached({scratch.text("missing.exe")});
  EXPECT_EQ(failure.number, 53);
  EXPECT_TRUE(failure.description.ends_with(u" : " + scratch.text("missing.exe")));
  EXPECT_EQ(startDetached({}).number, 53);
}

TEST(Processes, OnlyAProgramCanBeStarted) {
  const Scratch scratch;
  scratch.write("text.txt", "no program");
  EXPECT_TRUE(isStartable(executablePath()));
  EXPECT_FALSE(isStartable(scratch.text("text.txt")));
  EXPECT_FALSE(isStartable(scratch.text()));
  EXPECT_FALSE(isStartable(scratch.text("missing.exe")));
}

TEST(Processes, AProcessTellsItsExecutable) {
  EXPECT_EQ(executableName(static_cast<int>(::GetCurrentProcessId())), u"test_processes.exe");
  EXPECT_EQ(executableName(0x7FFFFFFC), u"");
}

}  // namespace
