// SPDX-License-Identifier: GPL-3.0-or-later
#include "WindowsSupport.h"
#include "platform/Desktop.h"
#include "platform/windows/RegistryAutostart.h"

namespace {

constexpr wchar_t kTop[] = L"Software\\Tavrollo-essai-session";
constexpr wchar_t kCommands[] = L"Software\\Tavrollo-essai-session\\Run";
constexpr wchar_t kSwitches[] = L"Software\\Tavrollo-essai-session\\Approved";

class RegistryAutostartTest : public ::testing::Test {
 protected:
  ~RegistryAutostartTest() override { ::RegDeleteTreeW(HKEY_CURRENT_USER, kTop); }

  static RegistryAutostart::Places places() {
    return {.commands = fromWide(kCommands), .switches = fromWide(kSwitches)};
  }

  static RegistryAutostart autostartOf(const Text& executable) {
    return {places(), executable, u"\"" + executable + u"\" --program-folder \"D:\\mon été\""};
  }

  // What stands in the registry; "-" when nothing does.
  static Text command() {
    wchar_t text[512] = {};
    DWORD bytes = sizeof text;
    const LSTATUS error = ::RegGetValueW(HKEY_CURRENT_USER, kCommands, L"Tavrollo", RRF_RT_REG_SZ,
                                         nullptr, text, &bytes);
    return error == ERROR_SUCCESS ? fromWide(text) : u"-";
  }

  static void switchTo(BYTE first) {
    const BYTE state[12] = {first};
    ASSERT_EQ(::RegSetKeyValueW(HKEY_CURRENT_USER, kSwitches, L"Tavrollo", REG_BINARY, state,
                                sizeof state),
              ERROR_SUCCESS);
  }

  Text program_ = executablePath();
};

TEST_F(RegistryAutostartTest, IsOffBeforeAnythingIsWritten) {
  RegistryAutostart autostart = autostartOf(program_);
  EXPECT_FALSE(autostart.isOn());
  EXPECT_FALSE(autostart.set(false));
  EXPECT_EQ(command(), u"-");
}

TEST_F(RegistryAutostartTest, OnWritesTheCommandAndOffTakesItAway) {
  RegistryAutostart autostart = autostartOf(program_);
  EXPECT_FALSE(autostart.set(true));
  EXPECT_EQ(command(), u"\"" + program_ + u"\" --program-folder \"D:\\mon été\"");
  EXPECT_TRUE(autostart.isOn());
  EXPECT_FALSE(autostart.set(false));
  EXPECT_EQ(command(), u"-");
  EXPECT_FALSE(autostart.isOn());
}

TEST_F(RegistryAutostartTest, WhatTheSystemSwitchedOffIsOffUntilItIsSwitchedOnHere) {
  RegistryAutostart autostart = autostartOf(program_);
  ASSERT_FALSE(autostart.set(true));
  switchTo(3);
  EXPECT_FALSE(autostart.isOn());
  switchTo(2);
  EXPECT_TRUE(autostart.isOn());
  switchTo(3);
  EXPECT_FALSE(autostart.set(true));
  EXPECT_TRUE(autostart.isOn());
}

TEST_F(RegistryAutostartTest, ACommandWhoseProgramIsGoneIsOff) {
  RegistryAutostart autostart = autostartOf(u"C:\\nulle part\\Tavrollo.exe");
  ASSERT_FALSE(autostart.set(true));
  EXPECT_NE(command(), u"-");
  EXPECT_FALSE(autostart.isOn());
}

TEST_F(RegistryAutostartTest, TheCommandOfTheProgramItselfIsQuotedWhereItNeedsTo) {
  const std::unique_ptr<Autostart> autostart =
      makeAutostart(program_, {u"--program-folder", u"C:\\a b\\"});
  ASSERT_TRUE(autostart);
  wchar_t text[2048] = {};
  DWORD bytes = sizeof text;
  ASSERT_FALSE(autostart->set(true));
  const LSTATUS error =
      ::RegGetValueW(HKEY_CURRENT_USER, L"Software\\Microsoft\\Windows\\CurrentVersion\\Run",
                     L"Tavrollo", RRF_RT_REG_SZ, nullptr, text, &bytes);
  EXPECT_TRUE(autostart->isOn());
  EXPECT_FALSE(autostart->set(false));
  ASSERT_EQ(error, ERROR_SUCCESS);
  EXPECT_TRUE(fromWide(text).ends_with(u" --program-folder \"C:\\a b\\\\\""))
      << toUtf8(fromWide(text));
}

}  // namespace
