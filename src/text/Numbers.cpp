// SPDX-License-Identifier: GPL-3.0-or-later
#include "text/Numbers.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <limits>
#include <system_error>

#include "text/Split.h"
#include "text/Utf.h"

namespace {

constexpr double kLargestPlainNumber = 1e15;  // beyond, digits alone would pretend precision
constexpr std::size_t kMostDigits = 400;      // of any double, written out
constexpr std::size_t kGroup = 3;

// A number as std::from_chars reads it, or nothing: sign, digits, one separator, exponent.
std::optional<std::string> plainNumber(TextView text, const LocaleData& locale) {
  std::string plain;
  for (const char16_t unit : trim(text)) {
    const bool digit = unit >= u'0' && unit <= u'9';
    const bool mark = unit == u'+' || unit == u'-' || unit == u'e' || unit == u'E';
    if (digit || mark) {
      plain += static_cast<char>(unit);
    } else if (unit == locale.decimalSeparator) {
      plain += '.';
    } else {
      return std::nullopt;
    }
  }
  if (!plain.starts_with('+')) return plain;
  if (plain.starts_with("+-")) return std::nullopt;
  return plain.substr(1);
}

template <class Integer>
std::optional<Integer> toInteger(TextView text, const LocaleData& locale) {
  const std::optional<double> number = toDouble(text, locale);
  if (!number) return std::nullopt;
  const double rounded = std::nearbyint(*number);
  const bool fits = rounded >= std::numeric_limits<Integer>::min() &&
                    rounded <= std::numeric_limits<Integer>::max();
  if (!fits) return std::nullopt;
  return static_cast<Integer>(rounded);
}

Text asciiText(const char* first, const char* last) { return Text(first, last); }

double roundedTo(double number, int decimals) {
  const double scale = std::pow(10.0, decimals);
  const double scaled = number * scale;
  if (std::fabs(scaled) >= kLargestPlainNumber) return number;  // it has no such decimals
  const double rounded = std::round(scaled) / scale;
  return rounded == 0 ? 0 : rounded;  // never "-0"
}

// `digits`, a row of digits with a sign or without, cut into groups from the right.
Text grouped(TextView digits, char16_t separator) {
  Text text(digits);
  if (separator == 0) return text;
  const std::size_t first = text.starts_with(u'-') ? 1 : 0;
  for (std::size_t at = text.size(); at > first + kGroup;) {
    at -= kGroup;
    text.insert(at, 1, separator);
  }
  return text;
}

}  // namespace

std::optional<double> toDouble(TextView text, const LocaleData& locale) {
  const std::optional<std::string> plain = plainNumber(text, locale);
  if (!plain) return std::nullopt;
  double number = 0;
  const char* const end = plain->data() + plain->size();
  const auto [last, error] = std::from_chars(plain->data(), end, number);
  if (error != std::errc() || last != end) return std::nullopt;
  return number;
}

std::optional<std::int16_t> toInt16(TextView text, const LocaleData& locale) {
  return toInteger<std::int16_t>(text, locale);
}

std::optional<std::int32_t> toInt32(TextView text, const LocaleData& locale) {
  return toInteger<std::int32_t>(text, locale);
}

std::int32_t myClngCook(TextView text, const LocaleData& locale) {
  return toInt32(text, locale).value_or(0);
}

Text numberText(std::int64_t number) {
  std::array<char, 24> digits{};
  const char* end = std::to_chars(digits.data(), digits.data() + digits.size(), number).ptr;
  return asciiText(digits.data(), end);
}

Text numberText(double number, const LocaleData& locale) {
  std::array<char, 64> digits{};
  const auto format = std::fabs(number) < kLargestPlainNumber ? std::chars_format::fixed
                                                              : std::chars_format::general;
  const auto [end, error] =
      std::to_chars(digits.data(), digits.data() + digits.size(), number, format);
  if (error != std::errc()) return u"0";  // a fraction too small for the buffer
  return replaceAll(asciiText(digits.data(), end), u'.', locale.decimalSeparator);
}

Text groupedNumberText(double number, const LocaleData& locale) {
  std::array<char, kMostDigits> digits{};
  const auto [end, error] =
      std::to_chars(digits.data(), digits.data() + digits.size(),
                    roundedTo(number, locale.decimals), std::chars_format::fixed, locale.decimals);
  if (error != std::errc()) return numberText(number, locale);
  const Text plain = asciiText(digits.data(), end);
  const std::size_t point = std::min(plain.find(u'.'), plain.size());
  Text text = grouped(TextView(plain).substr(0, point), locale.groupSeparator);
  if (point < plain.size()) text.append(1, locale.decimalSeparator).append(plain, point + 1);
  return text;
}

Text nineDigits(std::int32_t number) {
  const Text padded = u"000000000" + numberText(static_cast<std::int64_t>(number));
  return padded.substr(padded.size() - 9);
}
