// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <poll.h>
#include <sys/wait.h>

#include "unit/tools/RunTavrolloctl.h"

namespace {

Outcome codebar(std::vector<std::string> arguments) {
  arguments.insert(arguments.begin(), "codebar");
  return runTavrolloctl(arguments);
}

std::string batch(const std::string& input) {
  const Outcome run = runTavrolloctlOn(input, {"codebar", "--batch"});
  EXPECT_EQ(run.status, 0);
  EXPECT_EQ(run.err, "");
  return run.out;
}

struct Pipe {
  Pipe() { EXPECT_EQ(pipe2(ends, O_CLOEXEC), 0); }
  int ends[2] = {-1, -1};
};

// What can be read within five seconds, up to its first line's end.
std::string answerFrom(int file) {
  std::string answer;
  while (!answer.ends_with('\n')) {
    pollfd wanted = {file, POLLIN, 0};
    char byte = 0;
    if (poll(&wanted, 1, 5000) != 1 || read(file, &byte, 1) != 1) return answer + "(no more)";
    answer += byte;
  }
  return answer;
}

}  // namespace

TEST(TavrolloctlCodebar, PrintsTheFontString) {
  const struct {
    std::vector<std::string> arguments;
    std::string line;
  } rows[] = {
      {{"Code39", "AB-12"}, "*AB-12*"},
      {{"EAN13", "1234"}, "0AAAAAA*abcdei+"},
      {{"EAN13", "1234", "--addon", "12"}, "0AAAAAA*abcdei+[B\\C"},
      {{"--addon", "12", "EAN8", "1234567"}, ":BCDE*fgha+[B\\C"},
      {{"Interleaved2of5", "123"}, "É\"8Ê"},
      {{"Interleaved2of5", "--key", "123"}, "É-EÊ"},
      {{"Code128", "1234"}, "Í,BrÎ"},
      {{"Code128", "Æ"}, "ÌÆÇÎ"},
      {{"Code39", "--", "-12"}, "*-12*"},
      {{"Code39", "-12"}, "*-12*"},
      {{"Code128", "--", "--"}, "Ì--HÎ"},
  };
  for (const auto& row : rows) {
    const Outcome run = codebar(row.arguments);
    EXPECT_EQ(run.out, row.line + "\n");
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.err, "");
  }
}

TEST(TavrolloctlCodebar, ATypeIsANumberOrAName) {
  const std::vector<std::string> rows[] = {
      {"1", "Code39", "code39", "CODE 39", "Code-39"},
      {"2", "EAN13", "ean13", "EAN-13", "Ean 13"},
      {"3", "EAN8", "ean8", "EAN-8"},
      {"4", "Interleaved2of5", "interleaved 2 of 5", "INTERLEAVED-2OF5"},
      {"5", "Code128", "code128", "Code 128"},
  };
  for (const auto& names : rows) {
    const std::string expected = codebar({names[0], "1234567", "--key"}).out;
    EXPECT_GT(expected.size(), 1U);
    for (const std::string& name : names) {
      EXPECT_EQ(codebar({name, "1234567", "--key"}).out, expected) << name;
    }
  }
}

TEST(TavrolloctlCodebar, WhatCannotBeEncodedIsAnEmptyLineAndStatus1) {
  const std::vector<std::string> rows[] = {
      {"Code39", "abc"},   {"Code39", ""},   {"Code128", "é"},         {"Code128", "\xFF"},
      {"Code128", "a\tb"}, {"EAN13", "12x"}, {"Interleaved2of5", "x"}, {"0", "12"},
      {"6", "12"},         {"255", "12"}};
  for (const auto& arguments : rows) {
    const Outcome run = codebar(arguments);
    EXPECT_EQ(run.status, 1) << testing::PrintToString(arguments);
    EXPECT_EQ(run.out, "\n");
    EXPECT_EQ(run.err, "");
  }
}

TEST(TavrolloctlCodebar, SaysHowItIsUsed) {
  const Outcome help = codebar({"--help"});
  EXPECT_EQ(help.status, 0);
  EXPECT_TRUE(help.out.starts_with("Usage : tavrolloctl codebar TYPE SOURCE [--addon A] [--key]\n"
                                   "        tavrolloctl codebar --batch\n"));
  EXPECT_EQ(help.err, "");

  const std::vector<std::string> rows[] = {{},
                                           {"EAN13"},
                                           {"EAN13", "1", "2"},
                                           {"EAN13", "1", "--addon"},
                                           {"", "1"},
                                           {"EAN", "1"},
                                           {"256", "1"},
                                           {"-1", "1"},
                                           {"1x", "1"},
                                           {"EAN13", "--x"},
                                           {"EAN13", "1", "--batch"},
                                           {"--batch", "--help"},
                                           {"1", "1", "--help"}};
  for (const auto& arguments : rows) {
    const Outcome wrong = codebar(arguments);
    EXPECT_EQ(wrong.status, 2) << testing::PrintToString(arguments);
    EXPECT_EQ(wrong.out, "");
    EXPECT_EQ(wrong.err, help.out);
  }
}

TEST(TavrolloctlCodebar, ABatchHasOneLineForEachLine) {
  EXPECT_EQ(batch(""), "");
  EXPECT_EQ(batch("1\tAB-12\t\t0\n"
                  "EAN13\t1234\t12\t0\n"
                  "3\t1234567\t\t1\n"
                  "4\t123\t\t0\n"
                  "4\t123\t\t1\n"
                  "Code128\t1234\t\t0\n"),
            "*AB-12*\n0AAAAAA*abcdei+[B\\C\n:BCDE*fgha+\nÉ\"8Ê\nÉ-EÊ\nÍ,BrÎ\n");
}

TEST(TavrolloctlCodebar, ABatchHasAnEmptyLineForWhatCannotBeEncoded) {
  const std::string rows[] = {"",
                              "\t\t\t",
                              "1",
                              "1\t\t\t0",
                              "1\tabc\t\t0",
                              "6\t12\t\t0",
                              "x\t12\t\t0",
                              "1\tA\t\t2",
                              "1\tA\t\t",
                              "1\tA\t\t0\t",
                              "5\t\xC3\t\t0",
                              "1\tA\tx\t0\t0",
                              "EAN13\tx\t\t0",
                              "300\t12\t\t0",
                              std::string("5\t\0\t\t0", 6)};
  for (const std::string& row : rows) {
    EXPECT_EQ(batch(row + "\n1\tA\t\t0\n"), "\n*A*\n") << row;
  }
}

TEST(TavrolloctlCodebar, ABatchsLinesMayLackTheirLastFields) {
  EXPECT_EQ(batch("1\tA\n2\t1234\t12\n4\t123\t\n"), "*A*\n0AAAAAA*abcdei+[B\\C\nÉ\"8Ê\n");
}

TEST(TavrolloctlCodebar, ABatchsLinesEndWithLfOrCrLfAndTheLastOneMayLackIt) {
  EXPECT_EQ(batch("1\tA\t\t0\r\n1\tB\r\n1\tC"), "*A*\n*B*\n*C*\n");
  EXPECT_EQ(batch("1\tA\t\t0\n\n"), "*A*\n\n");
}

TEST(TavrolloctlCodebar, ABatchAnswersEachLineBeforeTheNextOneComes) {
  const Pipe in;
  const Pipe out;
  const pid_t child =
      detail::startTavrolloctl({"codebar", "--batch"}, in.ends[0], out.ends[1], STDERR_FILENO);
  close(in.ends[0]);
  close(out.ends[1]);
  for (const std::string source : {"A", "B", "C"}) {
    const std::string line = "1\t" + source + "\t\t0\n";
    EXPECT_EQ(write(in.ends[1], line.data(), line.size()), static_cast<ssize_t>(line.size()));
    EXPECT_EQ(answerFrom(out.ends[0]), "*" + source + "*\n");
  }
  close(in.ends[1]);
  EXPECT_EQ(detail::exitStatusOf(child), 0);
  close(out.ends[0]);
}

TEST(TavrolloctlCodebar, ABatchWhoseReaderWentAwayEndsQuietly) {
  const Pipe out;
  close(out.ends[0]);
  const Scratch folder;
  std::string lines;
  for (int i = 0; i < 100'000; ++i) lines += "1\tA\t\t0\n";
  writeBytes(folder.text("in"), lines);
  const int in = open(folder.path("in").c_str(), O_RDONLY | O_CLOEXEC);
  const Outcome run = runTavrolloctlInto(out.ends[1], {"codebar", "--batch"}, in);
  close(in);
  EXPECT_EQ(run.err, "");
}

TEST(TavrolloctlCodebar, ABatchOnAFullDiskIsAFailure) {
  const Scratch folder;
  writeBytes(folder.text("in"), "1\tA\t\t0\n");
  const int in = open(folder.path("in").c_str(), O_RDONLY | O_CLOEXEC);
  const Outcome run =
      runTavrolloctlInto(open("/dev/full", O_WRONLY | O_CLOEXEC), {"codebar", "--batch"}, in);
  close(in);
  EXPECT_EQ(run.status, 2);
  EXPECT_EQ(run.err, "Le résultat n'a pas pu être écrit sur la sortie standard.\n");
}

TEST(TavrolloctlCodebar, AHundredThousandLinesAreNotFeltAsAWait) {
  std::string lines;
  for (int i = 0; i < 100'000; ++i) {
    lines += std::to_string(1 + i % 5) + "\t" + std::to_string(i) + "\t12\t1\n";
  }
  const auto begin = std::chrono::steady_clock::now();
  const std::string out = batch(lines);
  const auto taken = std::chrono::steady_clock::now() - begin;
  EXPECT_EQ(std::count(out.begin(), out.end(), '\n'), 100'000);
  EXPECT_EQ(out.find("\n\n"), std::string::npos);
  // Some fifty times what it takes, for a machine that is busy and a build with sanitizers.
  EXPECT_LT(taken, std::chrono::seconds(5));
}
