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
  EXPECT_EQ(request.show, ShowState::Normal);
}

TEST(Relaunch, KeepsTheEndingOfAnExecutableThatHasOne) {
  const ShellRequest request = relaunchRequest(nativePath(u"C:\\Tavrollo\\Tavrollo.exe"));
  EXPECT_EQ(request.file, nativePath(u"C:\\Tavrollo\\reload.exe"));
  EXPECT_EQ(request.parameters, u"Tavrollo.exe\t" + nativePath(u"C:\\Tavrollo\\Tavrollo.exe"));
}

}  // namespace
