// SPDX-License-Identifier: GPL-3.0-or-later
#include "config/FileRequests.h"

#include <gtest/gtest.h>

#include "text/Paths.h"

TEST(FileRequests, AreExactToTheCharacter) {
  const struct {
    FileRequest request;
    FileRequest expected;
  } rows[] = {
      {cookieFileRequest(0, u"/p/a"),
       {u"Cookies  FireFox : Cherchez dans ****.default le fichier cookies.sqlite", u"Cookies ",
        u"*cookies*.*", u"/p/a"}},
      {cookieFileRequest(1, u""),
       {u"Cookies  G-Chrome : Cherchez le fichier cookies (sans extension)", u"Cookies ",
        u"*cookies*.*", u""}},
      {shortcutFileRequest(u"/p"),
       {u"Recherche du fichier  shortQrCode.js", u"shortQrCode.js ", u"*shortQrCode*.js",
        u"/p" + nativePath(u"/nav/res_css/js")}},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(row.request.title, row.expected.title);
    EXPECT_EQ(row.request.filterLabel, row.expected.filterLabel);
    EXPECT_EQ(row.request.pattern, row.expected.pattern);
    EXPECT_EQ(row.request.startFolder, row.expected.startFolder);
  }
}
