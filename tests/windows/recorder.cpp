// SPDX-License-Identifier: GPL-3.0-or-later
// Stands in for programs that the companion starts: notes, beside itself in a file named after it,
// what it was started with. One line each: its command line, tab, the folder it was started in.
#include <windows.h>

#include <filesystem>
#include <fstream>
#include <string>

namespace {

std::string utf8(const std::wstring& text) {
  const int size = ::WideCharToMultiByte(CP_UTF8, 0, text.data(), static_cast<int>(text.size()),
                                         nullptr, 0, nullptr, nullptr);
  std::string bytes(static_cast<std::size_t>(size), '\0');
  ::WideCharToMultiByte(CP_UTF8, 0, text.data(), static_cast<int>(text.size()), bytes.data(), size,
                        nullptr, nullptr);
  return bytes;
}

}  // namespace

int main() {
  wchar_t path[MAX_PATH] = {};
  ::GetModuleFileNameW(nullptr, path, MAX_PATH);
  const std::wstring folder = std::filesystem::current_path().wstring();
  std::ofstream note(std::filesystem::path(path).replace_extension(L".started"),
                     std::ios::app | std::ios::binary);
  note << utf8(std::wstring(::GetCommandLineW()) + L"\t" + folder + L"\n");
  return note ? 0 : 1;
}
