// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include "app/Relaunch.h"
#include "text/Paths.h"

namespace {

TEST(Relaunch, NamesTheProgramATabAndItsPath) {
  const ShellRequest request = relaunchRequest(nativePath(u"/opt/tavrollo/bin/tavrollo"));
  EXPECT_EQ(request.operation, u"");
  EXPECT_EQ(request.file, nativePath(u"/opt/tavrollo/bin/reload"));
  EXPECT_EQ(request.parameters, u"tavrollo\t" + nativePath(u"/opt/tavrollo/bin/tavrollo"));
  EXPECT_EQ(request.directory, nativePath(u"/opt/tavrollo/bin/"));
  EXPECT_EQ(request.show, ShowState::Normal);
}

TEST(Relaunch, QuotesAPathWithBlanksSoThatItStaysOneWord) {
  const Text path = nativePath(u"/home/mme dupont/tavrollo");
  const ShellRequest request = relaunchRequest(path);
  EXPECT_EQ(request.parameters, u"tavrollo\t" + parameterWord(path));
  EXPECT_NE(parameterWord(path), path);
}

TEST(Relaunch, KeepsTheEndingOfAnExecutableThatHasOne) {
  const ShellRequest request = relaunchRequest(nativePath(u"C:\\Tavrollo\\Tavrollo.exe"));
  EXPECT_EQ(request.file, nativePath(u"C:\\Tavrollo\\reload.exe"));
  EXPECT_EQ(request.parameters,
            u"Tavrollo.exe\t" + parameterWord(nativePath(u"C:\\Tavrollo\\Tavrollo.exe")));
}

}  // namespace
