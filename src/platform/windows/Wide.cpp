// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/windows/Wide.h"

#include <windows.h>

namespace {

constexpr std::wstring_view kLong = L"\\\\?\\";
constexpr std::wstring_view kLongShare = L"\\\\?\\UNC\\";
constexpr std::wstring_view kDevice = L"\\\\.\\";
constexpr std::wstring_view kShare = L"\\\\";

std::wstring fromTheRoot(const std::wstring& path) {
  std::wstring whole(MAX_PATH, L'\0');
  while (true) {
    const DWORD length =
        ::GetFullPathNameW(path.c_str(), static_cast<DWORD>(whole.size()), whole.data(), nullptr);
    const bool fits = length < whole.size();
    whole.resize(length);
    if (fits) return whole;
  }
}

}  // namespace

std::wstring longPath(TextView path) {
  if (path.empty() || path.find(u'\0') != TextView::npos) return {};
  const std::wstring given = wide(path);
  if (given.starts_with(kLong) || given.starts_with(kDevice)) return given;
  const std::wstring whole = fromTheRoot(given);
  if (whole.empty() || whole.starts_with(kLong) || whole.starts_with(kDevice)) return whole;
  if (whole.starts_with(kShare)) return std::wstring(kLongShare) + whole.substr(kShare.size());
  return std::wstring(kLong) + whole;
}

std::wstring plainPath(std::wstring path) {
  if (path.starts_with(kLongShare)) return std::wstring(kShare) + path.substr(kLongShare.size());
  if (path.starts_with(kLong)) path.erase(0, kLong.size());
  return path;
}

std::wstring below(const std::wstring& folder, std::wstring_view name) {
  const bool separated = folder.ends_with(L'\\');
  return folder + (separated ? L"" : L"\\") + std::wstring(name);
}
