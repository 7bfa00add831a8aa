// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/WebPage.h"

#include <gtest/gtest.h>

#include "platform/System.h"
#include "text/Paths.h"

namespace {

ShellRequest pageFor(const Text& shortcutPath, TextView name) {
  Settings settings;
  settings.shortcutPath = shortcutPath;
  return webPageRequest(settings, name);
}

}  // namespace

TEST(WebPage, IsOpenedBelowTheWebApplicationsRoot) {
  EXPECT_EQ(pageFor(nativePath(u"/t/nav/res_css/js/shortQrCode.js"), u"index.html").file,
            nativePath(u"/t/nav/index.html"));
  EXPECT_EQ(pageFor(u"C:\\t\\nav\\res_css\\js\\x.js", u"res_css\\htm\\start.html").file,
            nativePath(u"C:\\t\\nav\\res_css\\htm\\start.html"));
}

TEST(WebPage, HasNoRootWhereTheTableStandsOutsideAWebApplication) {
  EXPECT_EQ(pageFor(u"/elsewhere/shortQrCode.js", u"aide.html").file, u"aide.html");
}

TEST(WebPage, IsOpenedInANormalWindowFromTheRootFolder) {
  const ShellRequest request = pageFor(u"", u"index.html");
  EXPECT_EQ(request.operation, u"open");
  EXPECT_EQ(request.parameters, u"");
  EXPECT_EQ(request.directory, startInFolder(currentFolder(), nativeSeparator()));
  EXPECT_NE(request.directory, u"");
  EXPECT_EQ(request.show, ShowState::Normal);
}
