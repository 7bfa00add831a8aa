// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/System.h"

#include <windows.h>

#include <filesystem>
#include <memory>
#include <shlobj.h>

#include "platform/windows/Handle.h"
#include "platform/windows/Locale.h"
#include "platform/windows/Wide.h"
#include "text/Paths.h"

namespace {

// "" when the system does not know the folder.
Text knownFolder(const KNOWNFOLDERID& id) {
  wchar_t* path = nullptr;
  const bool found = SUCCEEDED(::SHGetKnownFolderPath(id, 0, nullptr, &path));
  const std::unique_ptr<wchar_t, decltype(&::CoTaskMemFree)> owner(path, &::CoTaskMemFree);
  return found ? fromWide(path) : Text();
}

Text withoutTrailingSeparator(Text path) {
  constexpr std::size_t kDriveRoot = 3;  // C:\ keeps its own
  while (path.size() > kDriveRoot && (path.ends_with(u'\\') || path.ends_with(u'/'))) {
    path.pop_back();
  }
  return path;
}

Text variableOr(const char* name, const KNOWNFOLDERID& id) {
  const std::optional<Text> value = environmentVariable(name);
  return withoutTrailingSeparator(value ? *value : knownFolder(id));
}

bool isFolder(const Text& path) {
  std::error_code error;
  return std::filesystem::is_directory(toPath(path), error);
}

}  // namespace

std::optional<Text> environmentVariable(const char* name) {
  const std::wstring wideName(name, name + std::char_traits<char>::length(name));
  std::wstring value(MAX_PATH, L'\0');
  while (true) {
    const DWORD length =
        ::GetEnvironmentVariableW(wideName.c_str(), value.data(), static_cast<DWORD>(value.size()));
    if (length == 0) return std::nullopt;
    const bool fits = length < value.size();
    value.resize(length);
    if (fits) return fromWide(value);
  }
}

Text currentFolder() {
  std::error_code error;
  const std::filesystem::path folder = std::filesystem::current_path(error);
  return error ? Text() : fromPath(folder);
}

Text executablePath() {
  std::wstring path(MAX_PATH, L'\0');
  while (true) {
    const DWORD length =
        ::GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size()));
    if (length < path.size()) return fromWide(plainPath(path.substr(0, length)));
    path.resize(path.size() * 2);
  }
}

Text homeFolder() { return variableOr("USERPROFILE", FOLDERID_Profile); }

// A service runs where nobody sees its windows.
bool hasScreen() {
  USEROBJECTFLAGS flags{};
  DWORD needed = 0;
  return ::GetUserObjectInformationW(::GetProcessWindowStation(), UOI_FLAGS, &flags, sizeof flags,
                                     &needed) &&
         (flags.dwFlags & WSF_VISIBLE) != 0;
}

// Who may do what stands in so many places that only trying tells.
bool isWritableFolder(const Text& path) {
  const std::wstring folder = longPath(path);
  if (folder.empty()) return false;
  const std::wstring name =
      below(folder, L".tavrollo-" + std::to_wstring(::GetCurrentProcessId()) + L".essai");
  const Handle file(::CreateFileW(name.c_str(), GENERIC_WRITE | DELETE, kShareAll, nullptr,
                                  CREATE_ALWAYS, FILE_ATTRIBUTE_HIDDEN | FILE_FLAG_DELETE_ON_CLOSE,
                                  nullptr));
  return file.isOpen();
}

// The old call, and not one that knows more: from Windows 8.1 on it answers 6.2 to a program that
// does not declare that it was made for a newer one, and that is the number that has a label.
SystemVersion systemVersion() {
  OSVERSIONINFOA version{};
  version.dwOSVersionInfoSize = sizeof version;
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wdeprecated-declarations"
  if (!::GetVersionExA(&version)) return {};
#pragma GCC diagnostic pop
  return {.platform = version.dwPlatformId,
          .major = version.dwMajorVersion,
          .minor = version.dwMinorVersion};
}

std::optional<SystemDescription> describeSystem() { return std::nullopt; }

LocaleData systemLocale() { return localeData(LOCALE_NAME_USER_DEFAULT); }

Text runtimeFolder() {
  const Text given = variableOr("LOCALAPPDATA", FOLDERID_LocalAppData);
  const Text folder = given + u"\\Tavrollo";
  ::CreateDirectoryW(longPath(folder).c_str(), nullptr);
  return !given.empty() && isFolder(folder) ? folder : homeFolder();
}
