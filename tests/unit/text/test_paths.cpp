// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include "text/Paths.h"

namespace {

TEST(Paths, AFileIsSplitIntoItsFolderAndItsName) {
  const Text path = nativePath(u"/opt/a b/tavrollo");
  EXPECT_EQ(folderOf(path), nativePath(u"/opt/a b"));
  EXPECT_EQ(nameOf(path), u"tavrollo");
  EXPECT_EQ(folderOf(u"tavrollo"), u"");
  EXPECT_EQ(nameOf(u"tavrollo"), u"tavrollo");
}

TEST(Paths, TextAndPathTurnIntoEachOther) {
  EXPECT_EQ(toPath(u"a/é 日.txt"), std::filesystem::path(u8"a/é 日.txt"));
  EXPECT_EQ(fromPath(std::filesystem::path(u8"a/é 日.txt")), u"a/é 日.txt");
  EXPECT_EQ(fromPath(toPath(u"")), u"");
}

TEST(Paths, ANameThatIsNoTextSurvives) {
  const std::filesystem::path name("a\xFF\xE9/b\xC3");
  EXPECT_EQ(toPath(fromPath(name)).native(), name.native());
}

TEST(Paths, EverySeparatorOfTheOtherKindIsTurned) {
  struct Row {
    TextView path;
    TextView slashes;
    TextView backslashes;
  };
  const Row rows[] = {
      {u"", u"", u""},
      {u"a b.txt", u"a b.txt", u"a b.txt"},
      {u"C:/dir/a b.txt", u"C:/dir/a b.txt", u"C:\\dir\\a b.txt"},
      {u"C:\\dir\\a b.txt", u"C:/dir/a b.txt", u"C:\\dir\\a b.txt"},
      {u"../..\\user_datas//é\\", u"../../user_datas//é/", u"..\\..\\user_datas\\\\é\\"},
  };
  for (const Row& row : rows) {
    EXPECT_EQ(withSeparator(row.path, u'/'), row.slashes);
    EXPECT_EQ(withSeparator(row.path, u'\\'), row.backslashes);
  }
}

TEST(Paths, TheNativePathHasTheSystemsSeparator) {
  EXPECT_EQ(nativeSeparator(), static_cast<char16_t>(std::filesystem::path::preferred_separator));
  EXPECT_EQ(nativePath(u"a/b\\c"), withSeparator(u"a/b\\c", nativeSeparator()));
}

TEST(Paths, TheWebApplicationRootIsCutInFrontOfTheScripts) {
  struct Row {
    TextView shortcutPath;
    TextView root;
  };
  const Row rows[] = {
      {u"C:\\T\\nav\\res_css\\js\\shortQrCode.js", u"C:\\T\\nav\\"},
      {u"/home/a/nav/res_css/js/shortQrCode.js", u"/home/a/nav/"},
      {u"/a/res_css/js/b/res_css/js/c.js", u"/a/"},
      {u"/a/res_css/js/b\\res_css\\js\\c.js", u"/a/"},
      {u"C:\\a\\res_css\\js\\b/res_css/js/c.js", u"C:\\a\\"},
      {u"res_css/js/a.js", u""},
      {u"/a/res_css/jsx", u"/a/"},
      {u"/a/RES_CSS/js/a.js", u""},
      {u"/a/res_css\\htm/a.js", u""},
      {u"/a/shortQrCode.js", u""},
      {u"", u""},
  };
  for (const Row& row : rows) EXPECT_EQ(webApplicationRoot(row.shortcutPath), row.root);
}

TEST(Paths, DocumentsAreOpenedInTheRootOfTheCurrentFolder) {
  EXPECT_EQ(startInFolder(u"C:\\Program Files\\T", u'\\'), u"C:\\");
  EXPECT_EQ(startInFolder(u"C:\\", u'\\'), u"C:\\");
  EXPECT_EQ(startInFolder(u"C:", u'\\'), u"C:");
  EXPECT_EQ(startInFolder(u"", u'\\'), u"");
  EXPECT_EQ(startInFolder(u"/home/a", u'/'), u"/");
  EXPECT_EQ(startInFolder(u"", u'/'), u"/");
}

}  // namespace
