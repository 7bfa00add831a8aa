// SPDX-License-Identifier: GPL-3.0-or-later
#include "barcode/BarcodeRtf.h"

#include <gtest/gtest.h>

#include "text/Paths.h"

namespace {

const std::string kHead =
    R"({\rtf1\ansi\ansicpg1252\deff0\deflang1036{\fonttbl{\f0\fswiss\fprq2\fcharset0 Arial;}{\f1\fnil\fcharset2 Code EAN13;}{\f2\fswiss\fcharset0 Arial;}}{\*\generator Msftedit 5.41.15.1515;}\viewkind4\uc1\pard\f0\fs24 Votre code barre :\par \par\f1\fs72 )";
const std::string kTail = R"(\f0\fs20\par \par Tavrollo\f2\par})" + std::string("\0\r\n", 3);

}  // namespace

TEST(ExportedRtf, IsTheTemplateAroundTheFontStringAsItStands) {
  const struct {
    TextView fontString;
    std::string bytes;
  } rows[] = {
      {u"0AAAAAA*abcdei+", "0AAAAAA*abcdei+"},   {u"", ""},
      {u":BCDE*fgha+[B\\C", ":BCDE*fgha+[B\\C"}, {u"\u00CCTavrollo{}\u00CE", "\xCCTavrollo{}\xCE"},
      {u"\u00C9\"8\u00CA", "\xC9\"8\xCA"},
  };
  for (const auto& row : rows) EXPECT_EQ(exportedRtf(row.fontString), kHead + row.bytes + kTail);
}

TEST(ExportedRtf, EndsWithAZeroByteAndALineEnd) {
  const std::string document = exportedRtf(u"*A*");
  EXPECT_EQ(document.substr(document.size() - 4), std::string("}\0\r\n", 4));
}

TEST(ExportedRtf, StandsInTheProgramFolder) {
  EXPECT_EQ(exportPath(u"/home/a/Tavrollo"), u"/home/a/Tavrollo" + nativePath(u"\\temp.rtf"));
}

TEST(CopiedRtf, NamesTheFontAndTheSizeAndMeansExactlyTheFontString) {
  const std::string head = R"({\rtf1\ansi\ansicpg1252\deff0{\fonttbl{\f0\fnil\fcharset0 )";
  EXPECT_EQ(copiedRtf(u"*A B*", u"Code 3 de 9 Lab", 36),
            head + R"(Code 3 de 9 Lab;}}\f0\fs72 *A B*})");
  EXPECT_EQ(copiedRtf(u"[B\\C", u"Code EAN13", 10), head + R"(Code EAN13;}}\f0\fs20 [B\\C})");
  EXPECT_EQ(copiedRtf(u"\u00CC {}~\u00CE", u"Code 128", 7),
            head + R"(Code 128;}}\f0\fs14 \'cc \{\}~\'ce})");
}
