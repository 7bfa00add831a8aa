// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/windows/RegistryAutostart.h"

#include <memory>
#include <windows.h>

#include <shellapi.h>

#include "platform/Desktop.h"
#include "platform/Files.h"
#include "platform/windows/Process.h"
#include "platform/windows/SystemError.h"
#include "platform/windows/Wide.h"

namespace {

constexpr wchar_t kName[] = L"Tavrollo";

// "" when there is none.
std::wstring readCommand(const std::wstring& key) {
  DWORD bytes = 0;
  if (::RegGetValueW(HKEY_CURRENT_USER, key.c_str(), kName, RRF_RT_REG_SZ, nullptr, nullptr,
                     &bytes) != ERROR_SUCCESS) {
    return {};
  }
  std::wstring text(bytes / sizeof(wchar_t) + 1, L'\0');
  bytes = static_cast<DWORD>(text.size() * sizeof(wchar_t));
  if (::RegGetValueW(HKEY_CURRENT_USER, key.c_str(), kName, RRF_RT_REG_SZ, nullptr, text.data(),
                     &bytes) != ERROR_SUCCESS) {
    return {};
  }
  text.resize(text.find(L'\0'));
  return text;
}

Text firstWord(const std::wstring& commandLine) {
  int count = 0;
  const std::unique_ptr<wchar_t*, decltype(&::LocalFree)> words(
      ::CommandLineToArgvW(commandLine.c_str(), &count), &::LocalFree);
  return words && count > 0 ? fromWide(words.get()[0]) : Text();
}

Failure removeValue(const std::wstring& key) {
  const LSTATUS error = ::RegDeleteKeyValueW(HKEY_CURRENT_USER, key.c_str(), kName);
  return error == ERROR_FILE_NOT_FOUND ? Failure() : failureFromSystem(static_cast<DWORD>(error));
}

Failure writeCommand(const std::wstring& key, const std::wstring& command) {
  const auto bytes = static_cast<DWORD>((command.size() + 1) * sizeof(wchar_t));
  return failureFromSystem(static_cast<DWORD>(
      ::RegSetKeyValueW(HKEY_CURRENT_USER, key.c_str(), kName, REG_SZ, command.c_str(), bytes)));
}

}  // namespace

// The first byte is even while the command is on, and odd when it was switched off.
bool RegistryAutostart::isSwitchedOff() const {
  BYTE state[64] = {};
  DWORD bytes = sizeof state;
  return ::RegGetValueW(HKEY_CURRENT_USER, wide(places_.switches).c_str(), kName, RRF_RT_REG_BINARY,
                        nullptr, state, &bytes) == ERROR_SUCCESS &&
         (state[0] & 1U) != 0;
}

bool RegistryAutostart::isOn() {
  const std::wstring command = readCommand(wide(places_.commands));
  return !command.empty() && FileExists(firstWord(command)) && !isSwitchedOff();
}

Failure RegistryAutostart::set(bool on) {
  const std::wstring commands = wide(places_.commands);
  Failure failure = removeValue(wide(places_.switches));
  if (!failure) failure = on ? writeCommand(commands, wide(command_)) : removeValue(commands);
  return failure ? about(failure, executable_) : failure;
}

std::unique_ptr<Autostart> makeAutostart(const Text& executable,
                                         const std::vector<Text>& arguments) {
  std::vector<Text> words = {executable};
  words.insert(words.end(), arguments.begin(), arguments.end());
  return std::make_unique<RegistryAutostart>(RegistryAutostart::Places(), executable,
                                             fromWide(commandLineOf(words)));
}
