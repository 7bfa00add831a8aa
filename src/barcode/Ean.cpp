// SPDX-License-Identifier: GPL-3.0-or-later
#include <algorithm>
#include <array>
#include <span>

#include "barcode/Digits.h"
#include "barcode/Encoders.h"
#include "barcode/ModcodeBarre.h"

namespace {

constexpr std::size_t kDigits13 = 12;  // without the check digit
constexpr std::size_t kDigits8 = 7;
constexpr std::size_t kShortAddOn = 2;
constexpr std::size_t kLongAddOn = 5;

// The symbols of nothing but zeros. A digit's character in each of its sets is so far behind that
// of the zero as its value says: "A" is the zero in odd parity, "K" in even parity, "a" in the
// right half. ":", "*" and "+" are guards (EAN-13 has the first one in the glyph of its first
// digit), "[" and "\\" the begin and the separators of an add-on.

// By the first digit.
constexpr std::array<TextView, 10> kZeros13 = {
    u"0AAAAAA*aaaaaa+", u"0AAKAKK*aaaaaa+", u"0AAKKAK*aaaaaa+", u"0AAKKKA*aaaaaa+",
    u"0AKAAKK*aaaaaa+", u"0AKKAAK*aaaaaa+", u"0AKKKAA*aaaaaa+", u"0AKAKAK*aaaaaa+",
    u"0AKAKKA*aaaaaa+", u"0AKKAKA*aaaaaa+"};

constexpr TextView kZeros8 = u":AAAA*aaaa+";

// By the remainder of the add-on's value, and by its check value.
constexpr std::array<TextView, 4> kZeros2 = {u"[A\\A", u"[A\\K", u"[K\\A", u"[K\\K"};
constexpr std::array<TextView, 10> kZeros5 = {
    u"[K\\K\\A\\A\\A", u"[K\\A\\K\\A\\A", u"[K\\A\\A\\K\\A", u"[K\\A\\A\\A\\K", u"[A\\K\\K\\A\\A",
    u"[A\\A\\K\\K\\A", u"[A\\A\\A\\K\\K", u"[A\\K\\A\\K\\A", u"[A\\K\\A\\A\\K", u"[A\\A\\K\\A\\K"};

constexpr std::size_t kLength13 = kZeros13[0].size();
constexpr std::size_t kLength8 = kZeros8.size();
constexpr std::size_t kShortLength = kZeros2[0].size();
constexpr std::size_t kLongLength = kZeros5[0].size();

// As many as a symbol has: with the number known, a processor takes many at a time.
template <std::size_t Count>
using Characters = std::span<const char16_t, Count>;

// `text` itself, or, where it has fewer characters, `room` with zeros in front of them.
template <std::size_t Count>
Characters<Count> zeroFilled(TextView text, std::array<char16_t, Count>& room) {
  if (text.size() == Count) return Characters<Count>(text.data(), Count);
  room.fill(u'0');
  std::copy_backward(text.begin(), text.end(), room.end());
  return room;
}

// It looks at all of them, since it would take them one by one if it might stop in their midst.
template <std::size_t Count>
bool areDigits(Characters<Count> characters) {
  bool all = true;
  for (const char16_t character : characters) all &= isDigit(character);
  return all;
}

template <std::size_t Count>
unsigned checkDigitOf(Characters<Count> digits) {
  unsigned sum = 0;
  for (std::size_t i = 0; i < Count; ++i) {
    sum += ((Count - i) % 2 == 0 ? 1 : 3) * digitValue(digits[i]);
  }
  return checkDigit(sum);
}

char16_t digitFrom(char16_t zero, unsigned value) { return static_cast<char16_t>(zero + value); }

// Writes the digits, the check digit and the guards behind the `Left` digits of the left half and
// at the end, and gives the end. `zeros` are the symbol from the first digit on.
template <std::size_t Left, std::size_t Count>
char16_t* writeDigits(char16_t* place, const char16_t* zeros, Characters<Count> digits) {
  for (std::size_t i = 0; i < Left; ++i) place[i] = digitFrom(zeros[i], digitValue(digits[i]));
  place[Left] = zeros[Left];
  for (std::size_t i = Left; i < Count; ++i) {
    place[i + 1] = digitFrom(zeros[i + 1], digitValue(digits[i]));
  }
  place[Count + 1] = digitFrom(zeros[Count + 1], checkDigitOf(digits));
  place[Count + 2] = zeros[Count + 2];
  return place + Count + 3;
}

// These write a symbol and give its end. They put zeros in front of too few digits; where a
// character is none they give `begin`.

char16_t* writeEan13(char16_t* begin, TextView text) {
  std::array<char16_t, kDigits13> room;
  const auto digits = zeroFilled(text, room);
  if (!areDigits(digits)) return begin;
  return writeDigits<7>(begin, kZeros13[digitValue(digits[0])].data(), digits);
}

char16_t* writeEan8(char16_t* begin, TextView text) {
  std::array<char16_t, kDigits8> room;
  const auto digits = zeroFilled(text, room);
  if (!areDigits(digits)) return begin;
  *begin = kZeros8[0];
  return writeDigits<4>(begin + 1, kZeros8.data() + 1, digits);
}

template <std::size_t Count>
char16_t* writeAddOnDigits(char16_t* place, TextView zeros, Characters<Count> digits) {
  for (std::size_t i = 0; i < Count; ++i) {
    *place++ = zeros[2 * i];
    *place++ = digitFrom(zeros[2 * i + 1], digitValue(digits[i]));
  }
  return place;
}

char16_t* writeShortAddOn(char16_t* begin, TextView text) {
  std::array<char16_t, kShortAddOn> room;
  const auto digits = zeroFilled(text, room);
  if (!areDigits(digits)) return begin;
  const unsigned number = 10 * digitValue(digits[0]) + digitValue(digits[1]);
  return writeAddOnDigits(begin, kZeros2[number % 4], digits);
}

char16_t* writeLongAddOn(char16_t* begin, TextView text) {
  std::array<char16_t, kLongAddOn> room;
  const auto digits = zeroFilled(text, room);
  if (!areDigits(digits)) return begin;
  const unsigned odd = digitValue(digits[0]) + digitValue(digits[2]) + digitValue(digits[4]);
  const unsigned even = digitValue(digits[1]) + digitValue(digits[3]);
  return writeAddOnDigits(begin, kZeros5[(3 * odd + 9 * even) % 10], digits);
}

char16_t* writeAddOn(char16_t* begin, TextView text) {
  if (text.empty()) return begin;
  return text.size() <= kShortAddOn ? writeShortAddOn(begin, text) : writeLongAddOn(begin, text);
}

std::size_t addOnLength(TextView digits) {
  if (digits.empty()) return 0;
  return digits.size() <= kShortAddOn ? kShortLength : kLongLength;
}

// What is too long for `count` digits, else `addOn`; five characters at most.
TextView addOnOf(TextView source, TextView addOn, std::size_t count) {
  return (source.size() > count ? source.substr(count) : addOn).substr(0, kLongAddOn);
}

void cutAt(Text& text, const char16_t* end) {
  text.resize(static_cast<std::size_t>(end - text.data()));
}

}  // namespace

void encodeEan13(Text& result, TextView source, TextView addOn) {
  addOn = addOnOf(source, addOn, kDigits13);
  result.resize(kLength13 + addOnLength(addOn));
  char16_t* const end = writeEan13(result.data(), source.substr(0, kDigits13));
  cutAt(result, writeAddOn(end, addOn));
}

void encodeEan8(Text& result, TextView source, TextView addOn) {
  addOn = addOnOf(source, addOn, kDigits8);
  result.resize(kLength8 + addOnLength(addOn));
  char16_t* const end = writeEan8(result.data(), source.substr(0, kDigits8));
  cutAt(result, writeAddOn(end, addOn));
}

Text ModcodeBarre::EAN13(TextView digits) {
  Text result;
  if (digits.size() == kDigits13) encodeEan13(result, digits, {});
  return result;
}

Text ModcodeBarre::EAN8(TextView digits) {
  Text result;
  if (digits.size() == kDigits8) encodeEan8(result, digits, {});
  return result;
}

Text ModcodeBarre::EANAddOn(TextView digits) {
  Text result;
  if (digits.size() != kShortAddOn && digits.size() != kLongAddOn) return result;
  result.resize(addOnLength(digits));
  cutAt(result, writeAddOn(result.data(), digits));
  return result;
}
