// SPDX-License-Identifier: GPL-3.0-or-later
#include "barcode/BarcodeOptions.h"

#include <gtest/gtest.h>

#include "barcode/ModcodeBarre.h"

TEST(BarcodeOptions, EachOneHasItsTypeItsFontAndItsControls) {
  const struct {
    std::uint8_t type;
    TextView shownFont;
    TextView font;
    bool hasAddOn;
    bool hasCheckBox;
  } rows[] = {
      {1, u"Code 3 de 9", u"Code 3 de 9", false, false},
      {1, u"Code3 de 9 Lab", u"Code 3 de 9 Lab", false, false},
      {2, u"Code EAN13", u"Code EAN13", true, false},
      {3, u"Code EAN13 (idem EAN8)", u"Code EAN13", true, false},
      {4, u"Code 2 of 5 interleaved", u"Code 2 of 5 interleaved", false, true},
      {5, u"Code 128", u"Code 128", false, false},
  };
  ASSERT_EQ(barcodeOptions().size(), std::size(rows));
  for (std::size_t i = 0; i < std::size(rows); ++i) {
    const BarcodeOption& option = barcodeOptions()[i];
    EXPECT_EQ(option.type, rows[i].type) << i;
    EXPECT_EQ(option.shownFont, rows[i].shownFont) << i;
    EXPECT_EQ(option.font, rows[i].font) << i;
    EXPECT_EQ(option.hasAddOn, rows[i].hasAddOn) << i;
    EXPECT_EQ(option.hasCheckBox, rows[i].hasCheckBox) << i;
  }
}

TEST(BarcodeOptions, AFontSizeIsAWholeNumberOfPointsFrom1To2160) {
  const struct {
    TextView typed;
    std::optional<std::int16_t> size;
  } rows[] = {
      {u"36", 36},     {u" 12 ", 12}, {u"1", 1},     {u"2160", 2160}, {u"10,4", 10},
      {u"10,5", 10},   {u"11,5", 12}, {u"0", {}},    {u"-1", {}},     {u"2161", {}},
      {u"", {}},       {u"abc", {}},  {u"36pt", {}}, {u"40000", {}},  {u"99999999999", {}},
      {u"\u0663", {}},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(typedFontSize(row.typed, frenchLocale()), row.size) << Text(row.typed).size();
  }
}
