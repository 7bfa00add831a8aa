// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/windows/Locale.h"

#include <windows.h>

#include "platform/windows/Wide.h"
#include "text/Utf.h"

namespace {

// "" when the system does not know it.
std::wstring localeText(const wchar_t* name, LCTYPE type) {
  const int length = ::GetLocaleInfoEx(name, type, nullptr, 0);
  if (length <= 1) return {};
  std::wstring text(static_cast<std::size_t>(length), L'\0');
  if (::GetLocaleInfoEx(name, type, text.data(), length) == 0) return {};
  text.pop_back();  // its closing zero
  return text;
}

// How often the letter at `at` is repeated.
std::size_t runLength(std::wstring_view picture, std::size_t at) {
  const std::size_t end = picture.find_first_not_of(picture[at], at);
  return (end == std::wstring_view::npos ? picture.size() : end) - at;
}

// strftime's letter for `count` of this one; "" for what is no part of a date.
std::string_view fieldOf(wchar_t letter, std::size_t count) {
  switch (letter) {
    case L'd': return count <= 2 ? "%d" : count == 3 ? "%a" : "%A";
    case L'M': return count <= 2 ? "%m" : count == 3 ? "%b" : "%B";
    case L'y': return count <= 2 ? "%y" : "%Y";
    default: return {};
  }
}

// Adds what stands between two apostrophes, the first of which is at `at`; the place behind them.
std::size_t takeQuoted(std::wstring_view picture, std::size_t at, std::wstring& literal) {
  const std::size_t end = std::min(picture.find(L'\'', at + 1), picture.size());
  literal += picture.substr(at + 1, end - at - 1);
  return end + 1;
}

void addLiteral(std::wstring_view literal, std::string& format) {
  for (const char unit : toUtf8(fromWide(literal))) {
    if (unit == '%') format += '%';
    format += unit;
  }
}

}  // namespace

std::string dateFormatOf(std::wstring_view picture) {
  std::string format;
  for (std::size_t at = 0; at < picture.size();) {
    const std::size_t count = runLength(picture, at);
    const std::string_view field = fieldOf(picture[at], count);
    std::wstring literal;
    if (!field.empty()) {
      format += field;
      at += count;
    } else if (picture[at] == L'\'') {
      at = takeQuoted(picture, at, literal);
    } else {
      literal = picture[at++];
    }
    addLiteral(literal, format);
  }
  return format;
}

LocaleData localeData(const wchar_t* name) {
  LocaleData data = frenchLocale();
  const std::wstring decimal = localeText(name, LOCALE_SDECIMAL);
  const std::wstring group = localeText(name, LOCALE_STHOUSAND);
  const std::wstring date = localeText(name, LOCALE_SSHORTDATE);
  if (decimal.size() == 1) {
    data.decimalSeparator = static_cast<char16_t>(decimal.front());
    data.groupSeparator = group.size() == 1 ? static_cast<char16_t>(group.front()) : u'\0';
  }
  if (!date.empty()) data.dateFormat = dateFormatOf(date);
  return data;
}
