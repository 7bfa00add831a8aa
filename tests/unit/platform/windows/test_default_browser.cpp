// SPDX-License-Identifier: GPL-3.0-or-later
#include "WindowsSupport.h"
#include "platform/windows/RegistryDefaultBrowser.h"

namespace {

constexpr TextView kKey = u"HKEY_CURRENT_USER\\Software\\Tavrollo-essai\\sub\\";

class DefaultBrowserTest : public ::testing::Test {
 protected:
  ~DefaultBrowserTest() override {
    ::RegDeleteTreeW(HKEY_CURRENT_USER, L"Software\\Tavrollo-essai");
  }

  Text read(const Text& key) {
    Text value = u"untouched";
    error = browser.RegRead(key, value);
    return value;
  }

  RegistryDefaultBrowser browser;
  std::uint32_t error = 0;
};

TEST_F(DefaultBrowserTest, AWrittenValueIsReadBack) {
  const Text name = Text(kKey) + u"valeur é";
  browser.RegWrite(name, u"\"C:\\a b\\é.exe\" -url \"%1\"");
  EXPECT_EQ(read(name), u"\"C:\\a b\\é.exe\" -url \"%1\"");
  EXPECT_EQ(error, 0u);
  EXPECT_TRUE(RegExists(browser, name));
  browser.RegWrite(name, u"");
  EXPECT_EQ(read(name), u"");
  EXPECT_EQ(error, 0u);
}

TEST_F(DefaultBrowserTest, SeparatorsAtTheEndMeanTheDefaultValue) {
  browser.RegWrite(Text(kKey) + u"\\", u"default");
  EXPECT_EQ(read(Text(kKey)), u"default");
  EXPECT_EQ(read(Text(kKey) + u"\\"), u"default");
  EXPECT_EQ(readRegister(browser, kKey), u"default");
}

TEST_F(DefaultBrowserTest, WhatIsMissingIsToldByItsNumber) {
  EXPECT_EQ(read(Text(kKey) + u"no"), u"untouched");
  EXPECT_EQ(error, kRegistryFileNotFound);
  browser.RegWrite(kKey, u"there");
  read(Text(kKey) + u"no");
  EXPECT_EQ(error, kRegistryFileNotFound);
  EXPECT_FALSE(RegExists(browser, Text(kKey) + u"no"));
  EXPECT_EQ(readRegister(browser, Text(kKey) + u"no"), u"");
}

TEST_F(DefaultBrowserTest, AKeyWithoutARootIsNotFound) {
  read(u"nothing");
  EXPECT_EQ(error, kRegistryPathNotFound);
  read(u"HKEY_NOWHERE\\a\\b");
  EXPECT_EQ(error, kRegistryPathNotFound);
  browser.RegWrite(u"HKEY_NOWHERE\\a\\b", u"a");
}

TEST_F(DefaultBrowserTest, VariablesInAValueAreReplaced) {
  const Variable variable("TAVROLLO_ESSAI", u"C:\\x");
  HKEY key = nullptr;
  ASSERT_EQ(::RegCreateKeyExW(HKEY_CURRENT_USER, L"Software\\Tavrollo-essai", 0, nullptr, 0,
                              KEY_SET_VALUE, nullptr, &key, nullptr),
            ERROR_SUCCESS);
  const std::wstring text = L"%TAVROLLO_ESSAI%\\a";
  ::RegSetValueExW(key, L"v", 0, REG_EXPAND_SZ, reinterpret_cast<const BYTE*>(text.c_str()),
                   static_cast<DWORD>((text.size() + 1) * sizeof(wchar_t)));
  ::RegCloseKey(key);
  EXPECT_EQ(read(u"HKCU\\Software\\Tavrollo-essai\\v"), u"C:\\x\\a");
}

TEST_F(DefaultBrowserTest, TheHandlerOfLinksIsWrittenAndRead) {
  const Text before = readRegister(browser, kHttpOpenCommand);
  browser.RegWrite(kHttpOpenCommand, kFirefoxOpenCommand);
  EXPECT_EQ(readRegister(browser, kHttpOpenCommand), kFirefoxOpenCommand);
  browser.RegWrite(kHttpOpenCommand, before);
  EXPECT_EQ(readRegister(browser, kHttpOpenCommand), before);
}

}  // namespace
