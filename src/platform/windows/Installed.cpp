// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/Installed.h"

#include <string>
#include <windows.h>

#include <objbase.h>

#include "platform/windows/Wide.h"

namespace {

constexpr TextView kWordAutomation = u"word.basic";

bool isAutomationServer(TextView name) {
  CLSID id;
  return SUCCEEDED(::CLSIDFromProgID(wide(name).c_str(), &id));
}

// Where a command line that begins with `command` finds its program; "" when it does not.
Text programOf(TextView command) {
  std::wstring path(32768, L'\0');
  const DWORD length = ::SearchPathW(nullptr, wide(command).c_str(), L".exe",
                                     static_cast<DWORD>(path.size()), path.data(), nullptr);
  return length < path.size() ? fromWide(path.substr(0, length)) : Text();
}

int CALLBACK fontFound(const LOGFONTW* /*font*/, const TEXTMETRICW* /*metric*/, DWORD /*kind*/,
                       LPARAM found) {
  *reinterpret_cast<bool*>(found) = true;
  return 0;  // one is enough
}

bool isInstalled(HDC screen, const std::wstring& family) {
  LOGFONTW wanted{};
  wanted.lfCharSet = DEFAULT_CHARSET;
  if (family.size() >= LF_FACESIZE) return false;
  family.copy(wanted.lfFaceName, family.size());
  bool found = false;
  ::EnumFontFamiliesExW(screen, &wanted, fontFound, reinterpret_cast<LPARAM>(&found), 0);
  return found;
}

}  // namespace

std::optional<FoundProgram> programFor(TextView command) {
  if (command == kWordAutomation) {
    if (isAutomationServer(command)) return FoundProgram{.program = Text(command), .missing = {}};
    return FoundProgram{.program = {}, .missing = u"Microsoft Word"};
  }
  return FoundProgram{.program = programOf(command), .missing = Text(command) + u".exe"};
}

std::optional<bool> trayStands() { return ::FindWindowW(L"Shell_TrayWnd", nullptr) != nullptr; }

std::optional<std::vector<Text>> missingFonts(const std::vector<Text>& families) {
  const HDC screen = ::GetDC(nullptr);
  if (!screen) return std::nullopt;
  std::vector<Text> missing;
  for (const Text& family : families) {
    if (!isInstalled(screen, wide(family))) missing.push_back(family);
  }
  ::ReleaseDC(nullptr, screen);
  return missing;
}

Text fontsAdvice() {
  return u"ouvrez chaque fichier de son dossier « fonts » et cliquez « Installer »";
}
