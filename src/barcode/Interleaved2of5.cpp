// SPDX-License-Identifier: GPL-3.0-or-later
#include "barcode/Digits.h"
#include "barcode/Encoders.h"
#include "barcode/ModcodeBarre.h"

namespace {

constexpr char16_t kStart = 201;
constexpr char16_t kStop = 202;

// The values 94 to 99 lie above what ASCII has room for.
char16_t pairCharacter(unsigned value) {
  return static_cast<char16_t>(value < 94 ? value + 33 : value + 101);
}

// Writes the pairs of a symbol and takes the sum of its check digit: with one behind the others,
// the tens count three times.
class PairWriter {
 public:
  explicit PairWriter(char16_t* place) : place_(place) {}

  // False where one of them is no digit's value.
  bool put(unsigned tens, unsigned ones) {
    if (tens > 9 || ones > 9) return false;
    *place_++ = pairCharacter(10 * tens + ones);
    sum_ += 3 * tens + ones;
    return true;
  }

  bool putWithCheck(unsigned tens) { return put(tens, checkDigit(sum_ + 3 * tens)); }

 private:
  char16_t* place_;
  std::uint64_t sum_ = 0;
};

bool writePairs(TextView digits, bool withCheck, PairWriter pairs) {
  std::size_t i = 0;
  if ((digits.size() % 2 == 1) != withCheck) {  // a zero in front makes the count even
    if (!pairs.put(0, digitValue(digits[i++]))) return false;
  }
  for (; i + 1 < digits.size(); i += 2) {
    if (!pairs.put(digitValue(digits[i]), digitValue(digits[i + 1]))) return false;
  }
  return !withCheck || pairs.putWithCheck(digitValue(digits[i]));
}

}  // namespace

void encodeInterleaved2of5(Text& result, TextView digits, bool withCheck) {
  result.clear();
  if (digits.empty()) return;
  const std::size_t count = digits.size() + (withCheck ? 1 : 0);
  result.resize((count + 1) / 2 + 2, kStop);
  result.front() = kStart;
  if (!writePairs(digits, withCheck, PairWriter(result.data() + 1))) result.clear();
}

Text ModcodeBarre::Interleaved2of5(TextView digits, bool withCheck) {
  Text result;
  encodeInterleaved2of5(result, digits, withCheck);
  return result;
}
