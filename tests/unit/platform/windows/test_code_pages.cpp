// SPDX-License-Identifier: GPL-3.0-or-later
// The program converts texts with tables of its own, so that both systems write the same bytes.
// Here they are held against the system's, as Wine 8 has them.
#include "WindowsSupport.h"
#include "text/AnsiCodePage.h"
#include "text/EncodeDecodeUtf8.h"

namespace {

constexpr UINT kAnsi = 1252;

Text systemsText(UINT codePage, std::string_view bytes) {
  const int size = static_cast<int>(bytes.size());
  std::wstring text(2 * bytes.size() + 1, L'\0');
  const int units = ::MultiByteToWideChar(codePage, 0, bytes.data(), size, text.data(),
                                          static_cast<int>(text.size()));
  return fromWide(std::wstring_view(text).substr(0, static_cast<std::size_t>(units)));
}

bool systemAccepts(std::string_view bytes) {
  return ::MultiByteToWideChar(CP_UTF8, MB_ERR_INVALID_CHARS, bytes.data(),
                               static_cast<int>(bytes.size()), nullptr, 0) > 0;
}

// Without characters that only resemble what the code page lacks; UTF-8 lacks none.
std::string systemsBytes(UINT codePage, TextView text) {
  const std::wstring units = wide(text);
  std::string bytes(4 * text.size() + 1, '\0');
  const int count =
      ::WideCharToMultiByte(codePage, codePage == kAnsi ? WC_NO_BEST_FIT_CHARS : 0, units.data(),
                            static_cast<int>(units.size()), bytes.data(),
                            static_cast<int>(bytes.size()), nullptr, nullptr);
  bytes.resize(static_cast<std::size_t>(count));
  return bytes;
}

// True when the system has no better byte for it than its mark.
bool systemLacks(char16_t unit) {
  const wchar_t wideUnit = static_cast<wchar_t>(unit);
  char byte = 0;
  BOOL lacks = FALSE;
  ::WideCharToMultiByte(kAnsi, WC_NO_BEST_FIT_CHARS, &wideUnit, 1, &byte, 1, nullptr, &lacks);
  return lacks != FALSE;
}

bool isSurrogate(char32_t codePoint) { return codePoint >= 0xD800 && codePoint <= 0xDFFF; }

void append(Text& text, char32_t codePoint) {
  if (codePoint < 0x10000) {
    text += static_cast<char16_t>(codePoint);
  } else {
    text += static_cast<char16_t>(0xD7C0 + (codePoint >> 10));
    text += static_cast<char16_t>(0xDC00 + (codePoint & 0x3FF));
  }
}

std::string hex(std::string_view bytes) {
  std::string digits;
  for (const char byte : bytes) {
    constexpr std::string_view kDigits = "0123456789ABCDEF";
    const auto value = static_cast<std::uint8_t>(byte);
    digits += {kDigits[value >> 4], kDigits[value & 0xF], ' '};
  }
  return digits;
}

}  // namespace

TEST(AnsiCodePage, EachByteIsTheSystemsCharacterAndComesBack) {
  for (int value = 0; value < 256; ++value) {
    const std::string byte(1, static_cast<char>(value));
    const Text character = fromAnsi(byte);
    EXPECT_EQ(character, systemsText(kAnsi, byte)) << hex(byte);
    EXPECT_EQ(systemsBytes(kAnsi, character), byte);
    EXPECT_EQ(toAnsi(character), byte);
  }
}

TEST(AnsiCodePage, ItLacksWhatTheSystemsLacks) {
  std::vector<int> different;
  for (int unit = 0; unit <= 0xFFFF; ++unit) {
    const auto character = static_cast<char16_t>(unit);
    const std::optional<std::string> byte = toAnsiExactly(Text(1, character));
    if (byte.has_value() == systemLacks(character)) different.push_back(unit);
  }
  EXPECT_EQ(different, std::vector<int>());
}

TEST(AnsiCodePage, WhatIsLackingIsTheSystemsMark) {
  const struct {
    Text text;
    std::string ours;
    std::string systems;
  } rows[] = {
      {u"été à 3 €", "\xE9t\xE9 \xE0 3 \x80", "\xE9t\xE9 \xE0 3 \x80"},
      {u"Łukasz", "?ukasz", "?ukasz"},
      {u"日本", "??", "??"},
      {Text{0xD83D, u'b'}, "?b", "?b"},
      {u"a\U0001F600b", "a?b", "a??b"},  // ours is one mark for one character
  };
  for (const auto& row : rows) {
    EXPECT_EQ(toAnsi(row.text), row.ours);
    EXPECT_EQ(systemsBytes(kAnsi, row.text), row.systems);
  }
}

// Without being told not to, the system writes what only resembles: ours never does.
TEST(AnsiCodePage, NothingIsWrittenThatOnlyResembles) {
  const wchar_t letter = L'Ł';
  char byte = 0;
  ASSERT_EQ(::WideCharToMultiByte(kAnsi, 0, &letter, 1, &byte, 1, nullptr, nullptr), 1);
  EXPECT_EQ(byte, 'L');
  EXPECT_EQ(toAnsi(u"Ł"), "?");
}

TEST(Utf8, EveryCodePointIsTheSystems) {
  Text text;
  for (char32_t codePoint = 0; codePoint <= 0x10FFFF; ++codePoint) {
    if (!isSurrogate(codePoint)) append(text, codePoint);
  }
  const std::string bytes = toUtf8(text);
  EXPECT_TRUE(bytes == systemsBytes(CP_UTF8, text));
  EXPECT_TRUE(fromUtf8(bytes) == text);
  EXPECT_TRUE(systemsText(CP_UTF8, bytes) == text);
}

TEST(Utf8, WhatIsIllFormedIsSoForTheSystemToo) {
  const struct {
    std::string bytes;
    Text ours;
    Text systems;
  } rows[] = {
      {"\x80", u"\uFFFD", u"\uFFFD"},
      {"a\xBFz", u"a\uFFFDz", u"a\uFFFDz"},
      {"\xC0\xAF", u"\uFFFD\uFFFD", u"\uFFFD\uFFFD"},
      {"\xC1\xBF", u"\uFFFD\uFFFD", u"\uFFFD\uFFFD"},
      {"\xC3", u"\uFFFD", u"\uFFFD"},
      {"\xC3z", u"\uFFFDz", u"\uFFFDz"},
      {"\xE2\x82", u"\uFFFD", u"\uFFFD"},
      {"\xE2\x82z", u"\uFFFDz", u"\uFFFDz"},
      {"\xF0\x9F\x98", u"\uFFFD", u"\uFFFD"},
      {"\xF0\x9F\x98z", u"\uFFFDz", u"\uFFFDz"},
      {"\xF5\x80", u"\uFFFD\uFFFD", u"\uFFFD\uFFFD"},
      {"\xF8\x88\x80\x80\x80", Text(5, u'\uFFFD'), Text(5, u'\uFFFD')},
      {"\xFE\xFF", u"\uFFFD\uFFFD", u"\uFFFD\uFFFD"},
      {"caf\xE9 noir", u"caf\uFFFD noir", u"caf\uFFFD noir"},
      // A second byte that may not follow the first: by Unicode's table the first is a part by
      // itself, as browsers have it. Wine takes both for one.
      {"\xE0\x80\xBF", Text(3, u'\uFFFD'), Text(2, u'\uFFFD')},
      {"\xE0\x9F\xBFz", Text(3, u'\uFFFD') + u"z", Text(2, u'\uFFFD') + u"z"},
      {"\xED\xA0\x80", Text(3, u'\uFFFD'), Text(2, u'\uFFFD')},
      {"\xED\xBF\xBF", Text(3, u'\uFFFD'), Text(2, u'\uFFFD')},
      {"\xED\xA0\xBD\xED\xB8\x80", Text(6, u'\uFFFD'), Text(4, u'\uFFFD')},
      {"\xED\xAFz", u"\uFFFD\uFFFDz", u"\uFFFDz"},
      {"\xF0\x81\x82z", Text(3, u'\uFFFD') + u"z", Text(2, u'\uFFFD') + u"z"},
      {"\xF0\x8F\xBF\xBF", Text(4, u'\uFFFD'), Text(3, u'\uFFFD')},
      {"\xF4\x90\x80\x80", Text(4, u'\uFFFD'), Text(3, u'\uFFFD')},
      {"\xF4\x91\x92\x93\xFFz", Text(5, u'\uFFFD') + u"z", Text(4, u'\uFFFD') + u"z"},
      // A letter where the text ends before the sequence does: ours keeps it, Wine loses it.
      {"\xE2z", u"\uFFFDz", u"\uFFFD"},
      {"\xF0z", u"\uFFFDz", u"\uFFFD"},
      {"\xE1\x80\xE2\xF0\x91\x92\xF1\xBFz", Text(4, u'\uFFFD') + u"z", Text(4, u'\uFFFD')},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(fromUtf8(row.bytes), row.ours) << hex(row.bytes);
    EXPECT_EQ(systemsText(CP_UTF8, row.bytes), row.systems) << hex(row.bytes);
    EXPECT_FALSE(isValidUtf8(row.bytes)) << hex(row.bytes);
    EXPECT_FALSE(systemAccepts(row.bytes)) << hex(row.bytes);
  }
}

TEST(Utf8, WhatIsWellFormedIsSoForTheSystemToo) {
  for (const std::string bytes : {"plan.pdf", "\x7F", "\xC2\x80", "\xC3\xA9t\xC3\xA9", "\xDF\xBF",
                                  "\xE0\xA0\x80", "\xE2\x82\xAC", "\xED\x9F\xBF", "\xEE\x80\x80",
                                  "\xEF\xBF\xBF", "\xF0\x90\x80\x80", "\xF4\x8F\xBF\xBF"}) {
    EXPECT_TRUE(isValidUtf8(bytes)) << hex(bytes);
    EXPECT_TRUE(systemAccepts(bytes)) << hex(bytes);
    EXPECT_EQ(fromUtf8(bytes), systemsText(CP_UTF8, bytes)) << hex(bytes);
  }
}

TEST(Utf8, ASurrogateWithoutItsPartnerIsTheSystemsReplacement) {
  for (const Text& text :
       {Text{u'a', 0xD83D, u'z'}, Text{0xD83D}, Text{0xDE00}, Text{0xDE00, 0xD83D}}) {
    EXPECT_EQ(toUtf8(text), systemsBytes(CP_UTF8, text));
  }
}

// The system's way of both: from one code page to units, and on to the other one.
TEST(EncodeDecodeUtf8, IsWhatTheSystemsCallsMakeOneAfterTheOther) {
  for (const Text& text : {Text(u"été à 3 €"), Text(u"Łukasz 日本 😀"), Text(u"a\u0081\u008D\u0090"),
                           Text(u"loc../../user_datas/œuvre.pdf")}) {
    const Text byteText = systemsText(kAnsi, systemsBytes(CP_UTF8, text));
    EXPECT_EQ(EncodeDecodeUtf8::encode(text), byteText);
    EXPECT_EQ(systemsText(CP_UTF8, systemsBytes(kAnsi, byteText)), text);
    EXPECT_EQ(EncodeDecodeUtf8::decode(byteText), text);
  }
}

TEST(EncodeDecodeUtf8, EndsAtTheFirstZeroAsTheSystemsCallsDo) {
  constexpr std::string_view kBytes("\xC3\xA9\0b", 4);
  wchar_t units[8] = {};
  ASSERT_EQ(::MultiByteToWideChar(CP_UTF8, 0, kBytes.data(), -1, units, 8), 2);
  EXPECT_EQ(EncodeDecodeUtf8::multiByteToText(kBytes, EncodeDecodeUtf8::kCodePageUtf8),
            fromWide(units));
  const Text text{u'é', u'\0', u'b'};
  char bytes[8] = {};
  ASSERT_EQ(::WideCharToMultiByte(kAnsi, 0, wide(text).c_str(), -1, bytes, 8, nullptr, nullptr), 2);
  EXPECT_EQ(EncodeDecodeUtf8::textToMultiByte(text, EncodeDecodeUtf8::GetACP()), bytes);
}
