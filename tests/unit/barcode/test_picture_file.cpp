// SPDX-License-Identifier: GPL-3.0-or-later
#include "barcode/PictureFile.h"

#include <gtest/gtest.h>

TEST(PictureFile, TheEndingTellsTheFormat) {
  const struct {
    TextView path;
    PictureFormat format;
  } rows[] = {
      {u"/a/b.png", PictureFormat::Png}, {u"/a/b.svg", PictureFormat::Svg},
      {u"/a/B.SVG", PictureFormat::Svg}, {u"/a.svg/b", PictureFormat::Png},
      {u"svg", PictureFormat::Png},      {u"", PictureFormat::Png},
  };
  for (const auto& row : rows) EXPECT_EQ(pictureFormat(row.path), row.format);
}

TEST(PictureFile, BothFormatsAreOfferedPngFirst) {
  const SaveRequest request = pictureSaveRequest();
  ASSERT_EQ(request.kinds.size(), 2U);
  EXPECT_EQ(request.kinds[0], (SaveRequest::Kind{u"Image PNG", u"png"}));
  EXPECT_EQ(request.kinds[1], (SaveRequest::Kind{u"Dessin SVG", u"svg"}));
  EXPECT_EQ(request.title, u"Tavrollo : Enregistrer le code barre");
  EXPECT_EQ(request.name, u"code barre");
}
