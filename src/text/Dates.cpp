// SPDX-License-Identifier: GPL-3.0-or-later
#include "text/Dates.h"

#include <chrono>

#include "text/Split.h"
#include "text/Utf.h"

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
bool take(char16_t letter, TextView& text, Parts& parts) {
  const bool isYear = letter == u'Y' || letter == u'y';
  const std::size_t before = text.size();
  const std::optional<int> number = takeNumber(text, isYear ? 4 : 2);
  if (!number) return false;
  const std::size_t digits = before - text.size();
  switch (letter) {
    case u'd':
    case u'e': parts.day = *number; return true;
    case u'm': parts.month = *number; return true;
    case u'Y':
    case u'y': parts.year = yearOf(*number, digits == 2); return digits == 2 || digits == 4;
    default: return false;
  }
}

// The letters that stand for several others, written out.
Text plain(TextView format) {
  Text text;
  for (std::size_t i = 0; i < format.size(); ++i) {
    const TextView two = format.substr(i, 2);
    if (two == u"%D" || two == u"%F") {
      text += two == u"%D" ? u"%m/%d/%y" : u"%Y-%m-%d";
      ++i;
    } else if (two == u"%-") {  // a number without its leading zero
      text += u'%';
      ++i;
    } else {
      text += format[i];
    }
  }
  return text;
}

}  // namespace

std::optional<std::int64_t> dayNumber(TextView text, std::string_view format) {
  const Text letters = plain(fromUtf8(format));
  TextView rest = trim(text);
  Parts parts;
  for (std::size_t i = 0; i < letters.size(); ++i) {
    if (letters[i] == u'%' && i + 1 < letters.size()) {
      if (!take(letters[++i], rest, parts)) return std::nullopt;
      continue;
    }
    if (rest.empty() || rest.front() != letters[i]) return std::nullopt;
    rest.remove_prefix(1);
  }
  const std::chrono::year_month_day date{std::chrono::year(parts.year),
                                         std::chrono::month(static_cast<unsigned>(parts.month)),
                                         std::chrono::day(static_cast<unsigned>(parts.day))};
  if (!rest.empty() || !date.ok()) return std::nullopt;
  return std::chrono::sys_days(date).time_since_epoch().count();
}
