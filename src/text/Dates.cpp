// SPDX-License-Identifier: GPL-3.0-or-later
#include "text/Dates.h"

#include <chrono>
#include <string>

#include "text/Split.h"

namespace {

bool isDigit(char16_t unit) { return unit >= u'0' && unit <= u'9'; }

// Takes a number of at most `most` digits off the front of `text`.
std::optional<int> takeNumber(TextView& text, std::size_t most) {
  constexpr int kBase = 10;
  int number = 0;
  std::size_t length = 0;
  for (; length < most && length < text.size() && isDigit(text[length]); ++length) {
    number = number * kBase + (text[length] - u'0');
  }
  if (length == 0) return std::nullopt;
  text.remove_prefix(length);
  return number;
}

int yearOf(int number, bool twoDigits) {
  constexpr int kPivot = 30;
  if (!twoDigits) return number;
  return number < kPivot ? 2000 + number : 1900 + number;
}

struct Parts {
  int year = 0;
  int month = 0;
  int day = 0;
};

// Takes what the letter stands for. False when that is not there, or when the letter is unknown.
bool take(char letter, TextView& text, Parts& parts) {
  const bool isYear = letter == 'Y' || letter == 'y';
  const std::size_t before = text.size();
  const std::optional<int> number = takeNumber(text, isYear ? 4 : 2);
  if (!number) return false;
  const std::size_t digits = before - text.size();
  switch (letter) {
    case 'd':
    case 'e': parts.day = *number; return true;
    case 'm': parts.month = *number; return true;
    case 'Y':
    case 'y': parts.year = yearOf(*number, digits == 2); return digits == 2 || digits == 4;
    default: return false;
  }
}

// The letters that stand for several others, written out.
std::string plain(std::string_view format) {
  std::string text;
  for (std::size_t i = 0; i < format.size(); ++i) {
    const std::string_view two = format.substr(i, 2);
    if (two == "%D" || two == "%F") {
      text += two == "%D" ? "%m/%d/%y" : "%Y-%m-%d";
      ++i;
    } else if (two == "%-") {  // a number without its leading zero
      text += '%';
      ++i;
    } else {
      text += format[i];
    }
  }
  return text;
}

}  // namespace

std::optional<std::int64_t> dayNumber(TextView text, std::string_view format) {
  const std::string letters = plain(format);
  TextView rest = trim(text);
  Parts parts;
  for (std::size_t i = 0; i < letters.size(); ++i) {
    if (letters[i] == '%' && i + 1 < letters.size()) {
      if (!take(letters[++i], rest, parts)) return std::nullopt;
      continue;
    }
    if (rest.empty() || rest.front() != static_cast<unsigned char>(letters[i])) return std::nullopt;
    rest.remove_prefix(1);
  }
  const std::chrono::year_month_day date{std::chrono::year(parts.year),
                                         std::chrono::month(static_cast<unsigned>(parts.month)),
                                         std::chrono::day(static_cast<unsigned>(parts.day))};
  if (!rest.empty() || !date.ok()) return std::nullopt;
  return std::chrono::sys_days(date).time_since_epoch().count();
}
