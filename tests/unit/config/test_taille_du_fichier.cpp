// SPDX-License-Identifier: GPL-3.0-or-later
#include "config/TailleDuFichier.h"

#include <gtest/gtest.h>

#include <limits>

TEST(TailleDuFichier, EveryUnitBeginsAboveItsLimit) {
  const struct {
    std::uint64_t bytes;
    Text text;
  } rows[] = {
      {0, u"0 octets"},
      {1, u"1 octets"},
      {1023, u"1023 octets"},
      {1024, u"1024 octets"},
      {1025, u"1,00 Ko"},
      {1536, u"1,50 Ko"},
      {1048575, u"1\u00A0024,00 Ko"},
      {1048576, u"1\u00A0024,00 Ko"},
      {1048577, u"1,00 Mo"},
      {5767168, u"5,50 Mo"},
      {1073741824, u"1\u00A0024,00 Mo"},
      {1073741825, u"1,00 Go"},
      {2147483648, u"2,00 Go"},
      {1649267441664, u"1\u00A0536,00 Go"},
      {std::numeric_limits<std::uint64_t>::max(), u"17\u00A0179\u00A0869\u00A0184,00 Go"},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(storesearch::TailleDuFichier(row.bytes, frenchLocale()), row.text) << row.bytes;
  }
}

TEST(TailleDuFichier, NumbersAreTheLocales) {
  const LocaleData locale = {u'.', "", u',', 1};
  EXPECT_EQ(storesearch::TailleDuFichier(1048576, locale), u"1,024.0 Ko");
  EXPECT_EQ(storesearch::TailleDuFichier(1024, locale), u"1024 octets");
}
