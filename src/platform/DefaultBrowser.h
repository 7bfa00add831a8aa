// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

#include "text/Text.h"

// The system's record of who opens web links, under the names that it has in the Windows registry.
// Where there is no registry, the desktop's own settings stand behind the same keys.

inline constexpr TextView kHttpOpenCommand = u"HKEY_CLASSES_ROOT\\http\\shell\\open\\command\\\\";
inline constexpr TextView kHttpUserChoice =
    u"HKEY_CURRENT_USER\\Software\\Microsoft\\Windows\\Shell\\Associations\\UrlAssociations\\http"
    u"\\UserChoice\\Progid";
inline constexpr TextView kFirefoxApplication = u"HKEY_CLASSES_ROOT\\Applications\\firefox.exe\\\\";

// What makes Firefox the http handler when it is written to kHttpOpenCommand.
inline constexpr TextView kFirefoxOpenCommand =
    u"\"C:\\Program Files (x86)\\Mozilla Firefox\\firefox.exe\" -osint -url \"%1\"";

inline constexpr std::uint32_t kRegistryFileNotFound = 0x80070002;
inline constexpr std::uint32_t kRegistryPathNotFound = 0x80070003;

class DefaultBrowser {
 public:
  virtual ~DefaultBrowser() = default;

  // Reads the value of `key`; 0 on success, else the system's error code.
  virtual std::uint32_t RegRead(TextView key, Text& value) = 0;

  // Writes a "REG_SZ" value. A failure is not reported.
  virtual void RegWrite(TextView key, TextView value) = 0;
};

// The value of `key`, "" when it cannot be read.
Text readRegister(DefaultBrowser& browser, TextView key);

// False when the system says that there is no such file or path; true otherwise, errors included.
bool RegExists(DefaultBrowser& browser, TextView key);
