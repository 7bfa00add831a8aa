// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include "setup/InstalledFiles.h"

namespace {

const std::string kOne(64, '1');
const std::string kLetters(64, 'f');

TEST(InstalledFiles, WhatIsWrittenIsReadBack) {
  const InstalledFiles files = {{"nav/a b.html", kOne}, {"nav/sch\xc3\xa9ma.svg", kLetters}};
  EXPECT_EQ(parseInstalledFiles(installedFilesText(files)), files);
}

TEST(InstalledFiles, ALineIsTheDigestTwoBlanksAndThePath) {
  const std::string text = installedFilesText({{"b", kLetters}, {"a", kOne}});
  EXPECT_EQ(text.substr(text.find('\n') + 1), kOne + "  a\n" + kLetters + "  b\n");
  EXPECT_EQ(text[0], '#');
}

TEST(InstalledFiles, LinesThatAreNoneArePassedOver) {
  for (const std::string& line :
       {std::string(), std::string("# comment"), kOne, kOne + "  ", kOne + " a", kOne + "\ta b",
        kOne.substr(1) + "  a", std::string(64, 'g') + "  a", std::string(64, 'F') + "  a"}) {
    EXPECT_EQ(parseInstalledFiles(line + "\n"), InstalledFiles()) << line;
    EXPECT_EQ(parseInstalledFiles(line + "\n" + kOne + "  b"), (InstalledFiles{{"b", kOne}}))
        << line;
  }
}

TEST(InstalledFiles, BothLineEndsAreRead) {
  EXPECT_EQ(parseInstalledFiles(kOne + "  a\r\n" + kLetters + "  b\r\n"),
            (InstalledFiles{{"a", kOne}, {"b", kLetters}}));
}

}  // namespace
