// SPDX-License-Identifier: GPL-3.0-or-later
#include "RecordingWord.h"
#include "WindowsSupport.h"
#include "platform/Desktop.h"
#include "platform/Shell.h"

namespace {

constexpr const char* kMayNotRegister = "only an administrator may register a word processor";

class WindowsShellTest : public ::testing::Test {
 protected:
  // What the helper wrote down: its arguments, and its window's state and folder.
  std::string arguments() { return bytesOnceReadable(scratch.text("started")); }
  std::string how() { return bytesOnceReadable(scratch.text("how")); }

  Scratch scratch;
  const Text program = helperAs(scratch, "Tavrollo.exe");
  std::vector<Text> traces;
  std::unique_ptr<Shell> shell = makeShell([this](const Text& line) { traces.push_back(line); });
};

TEST_F(WindowsShellTest, AProgramGetsItsParametersFolderAndWindow) {
  scratch.makeFolders("start é");
  EXPECT_FALSE(shell->ShellExecute({.operation = u"open",
                                    .file = program,
                                    .parameters = u"C:\\a \"b c\" é日",
                                    .directory = scratch.text("start é"),
                                    .show = ShowState::Maximised}));
  EXPECT_EQ(arguments(), "C:\\a\nb c\né日\n");
  EXPECT_EQ(how(), "3\n" + scratch.path("start é") + "\n");
  EXPECT_TRUE(traces.empty());
}

TEST_F(WindowsShellTest, WithoutMoreAWindowIsNormal) {
  EXPECT_FALSE(shell->ShellExecute({.file = program}));
  EXPECT_EQ(arguments(), "");
  EXPECT_EQ(how(), "1\n" + toUtf8(currentFolder()) + "\n");
}

TEST_F(WindowsShellTest, WhatCannotBeOpenedIsTracedByName) {
  const Failure failure = shell->ShellExecute({.file = scratch.text("missing é.pdf")});
  EXPECT_EQ(failure.number, 53);
  ASSERT_EQ(traces.size(), 1u);
  EXPECT_EQ(traces[0], u"Fichier introuvable : " + scratch.text("missing é.pdf"));
  EXPECT_EQ(shell->ShellExecute({}).number, 53);
}

TEST_F(WindowsShellTest, ACommandLineIsGivenAsItStands) {
  EXPECT_FALSE(shell->startCommandLine(program + u" C:\\dir\\a b.txt \"c d\""));
  EXPECT_EQ(arguments(), "C:\\dir\\a\nb.txt\nc d\n");
  EXPECT_TRUE(how().starts_with("1\n"));
}

TEST_F(WindowsShellTest, ACommandThatIsMissingIsTold) {
  const Failure failure = shell->startCommandLine(u"no-such-program a");
  EXPECT_EQ(failure.number, 53);
  EXPECT_EQ(traces, std::vector<Text>{u"Fichier introuvable : no-such-program a"});
}

TEST_F(WindowsShellTest, AParameterIsOneWordAgain) {
  EXPECT_FALSE(shell->ShellExecute(
      {.file = program,
       .parameters = u"Tavrollo.exe\t" + parameterWord(u"C:\\my folder\\Tavrollo.exe")}));
  EXPECT_EQ(arguments(), "Tavrollo.exe\nC:\\my folder\\Tavrollo.exe\n");
}

TEST_F(WindowsShellTest, WithoutAWordProcessorItsAutomationFails) {
  EXPECT_EQ(shell->openInWord(u"C:\\a.doc").number, 429);
  EXPECT_EQ(traces.size(), 1u);
}

TEST_F(WindowsShellTest, TheWordProcessorShowsItselfAndThenOpensTheDocument) {
  RecordingWord word;
  {
    const AnswersToWordBasic answers(word);
    if (!answers.named()) GTEST_SKIP() << kMayNotRegister;
    ASSERT_TRUE(answers.offered());
    EXPECT_FALSE(shell->openInWord(u"C:\\é 日\\lettre, 1.doc"));
  }
  EXPECT_EQ(word.calls,
            (std::vector<std::wstring>{L"AppShow", L"FileOpen C:\\é 日\\lettre, 1.doc"}));
  EXPECT_EQ(word.references, 0);
  EXPECT_TRUE(traces.empty());
}

TEST_F(WindowsShellTest, AWordProcessorThatFailsIsTold) {
  const struct {
    std::wstring refuses;
    std::wstring lacks;
    std::vector<std::wstring> calls;
  } rows[] = {
      {L"AppShow", L"", {L"AppShow"}},
      {L"FileOpen", L"", {L"AppShow", L"FileOpen C:\\a.doc"}},
      {L"", L"AppShow", {}},
      {L"", L"FileOpen", {L"AppShow"}},
  };
  for (const auto& row : rows) {
    RecordingWord word;
    word.refuses = row.refuses;
    word.lacks = row.lacks;
    {
      const AnswersToWordBasic answers(word);
      if (!answers.named()) GTEST_SKIP() << kMayNotRegister;
      ASSERT_TRUE(answers.offered());
      EXPECT_EQ(shell->openInWord(u"C:\\a.doc").number, 440);
    }
    EXPECT_EQ(word.calls, row.calls);
    EXPECT_EQ(word.references, 0);
  }
  EXPECT_EQ(traces, std::vector<Text>(4, u"Erreur Automation"));
}

TEST_F(WindowsShellTest, NobodyHasToBeCollected) {
  EXPECT_EQ(shell->eventsFd(), -1);
  shell->reap();
}

}  // namespace
