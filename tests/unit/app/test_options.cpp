// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/Options.h"

#include <gtest/gtest.h>

#include "platform/Version.h"

namespace {

using Arguments = std::vector<std::string>;

}  // namespace

TEST(Options, AreAllOptional) {
  const std::optional<Options> options = parseOptions({});
  ASSERT_TRUE(options);
  EXPECT_EQ(options->programFolder, std::nullopt);
  EXPECT_FALSE(options->trace);
}

TEST(Options, TheProgramFolderIsTheNextWordOrStandsBehindAnEqualsSign) {
  for (const Arguments& arguments :
       {Arguments{"--program-folder", "/a b/\xC3\xA9"}, Arguments{"--program-folder=/a b/\xC3\xA9"},
        Arguments{"--program-folder", "/first", "--program-folder=/a b/\xC3\xA9"}}) {
    const std::optional<Options> options = parseOptions(arguments);
    ASSERT_TRUE(options);
    EXPECT_EQ(options->programFolder, u"/a b/é");
  }
}

TEST(Options, TraceStandsAlone) {
  const std::optional<Options> options = parseOptions({"--trace", "--program-folder=/a"});
  ASSERT_TRUE(options);
  EXPECT_TRUE(options->trace);
  EXPECT_EQ(options->programFolder, u"/a");
}

TEST(Options, TheTestWindowIsAskedForByAWordOfItsOwn) {
  EXPECT_FALSE(parseOptions({})->testWindow);
  const std::optional<Options> options = parseOptions({"--test-window", "--program-folder=/a"});
  ASSERT_TRUE(options);
  EXPECT_TRUE(options->testWindow);
  EXPECT_EQ(options->programFolder, u"/a");
}

TEST(Options, WhatIsNotUnderstoodIsRefused) {
  for (const Arguments& arguments :
       {Arguments{"--program-folder"}, Arguments{"--program-folder="},
        Arguments{"--program-folder", ""}, Arguments{"--trace=1"}, Arguments{"--test-window=1"},
        Arguments{"file"}, Arguments{""}, Arguments{"--trace", "--what"}}) {
    EXPECT_FALSE(parseOptions(arguments)) << arguments.back();
  }
}

TEST(Options, HelpAndVersionAreAnsweredWhateverStandsBesideThem) {
  EXPECT_EQ(textAskedFor({}), std::nullopt);
  EXPECT_EQ(textAskedFor({"--trace", "--program-folder=/a"}), std::nullopt);
  EXPECT_EQ(textAskedFor({"--what", "--help"}), usageText());
  EXPECT_EQ(textAskedFor({"--version"}), std::string("tavrollo ") + kVersionText + "\n");
}

TEST(Options, TheUsageNamesEveryOption) {
  for (const char* option :
       {"--program-folder", "--trace", "--test-window", "--version", "--help"}) {
    EXPECT_NE(usageText().find(option), std::string::npos) << option;
  }
}
