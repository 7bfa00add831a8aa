// SPDX-License-Identifier: GPL-3.0-or-later
#include "WindowsSupport.h"
#include "platform/windows/Locale.h"

namespace {

TEST(Locale, APictureOfADateBecomesAFormat) {
  const struct {
    std::wstring_view picture;
    std::string format;
  } rows[] = {
      {L"dd/MM/yyyy", "%d/%m/%Y"},
      {L"d.M.yy", "%d.%m.%y"},
      {L"M/d/yyyy", "%m/%d/%Y"},
      {L"yyyy-MM-dd", "%Y-%m-%d"},
      {L"dddd d MMMM yyyy", "%A %d %B %Y"},
      {L"ddd d MMM", "%a %d %b"},
      {L"d 'de' MMMM", "%d de %B"},
      {L"d%M", "%d%%%m"},
      {L"yyyy'年'M", "%Y年%m"},
      {L"d 'unclosed", "%d unclosed"},
      {L"", ""},
  };
  for (const auto& row : rows) EXPECT_EQ(dateFormatOf(row.picture), row.format);
}

TEST(Locale, TheSystemKnowsALocalesSeparatorsAndDates) {
  const LocaleData french = localeData(L"fr-FR");
  EXPECT_EQ(french.decimalSeparator, u',');
  EXPECT_EQ(french.dateFormat, "%d/%m/%Y");
  EXPECT_TRUE(french.groupSeparator == u'\u00A0' || french.groupSeparator == u'\u202F');
  const LocaleData american = localeData(L"en-US");
  EXPECT_EQ(american.decimalSeparator, u'.');
  EXPECT_EQ(american.groupSeparator, u',');
  EXPECT_EQ(american.dateFormat, "%m/%d/%Y");
}

TEST(Locale, ALocaleThatNobodyKnowsIsFrench) {
  EXPECT_EQ(localeData(L"no such locale"), frenchLocale());
}

}  // namespace
