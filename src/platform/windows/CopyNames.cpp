// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/windows/CopyNames.h"

#include <cwchar>

#include "platform/FileCopy.h"
#include "platform/windows/FileTime.h"
#include "platform/windows/Handle.h"

namespace {

constexpr std::wstring_view kBegin = L".tavrollo-copie-";
constexpr std::wstring_view kEnd = L".tmp";

// When the process was started: with its number, that names it for good. 0 when there is no such
// process, or none of ours.
std::int64_t startOf(DWORD process) {
  const Handle handle(::OpenProcess(PROCESS_QUERY_LIMITED_INFORMATION, FALSE, process));
  FILETIME start{};
  FILETIME end{};
  FILETIME kernel{};
  FILETIME user{};
  if (!handle.isOpen() || !::GetProcessTimes(handle.get(), &start, &end, &kernel, &user)) return 0;
  return end.dwHighDateTime == 0 && end.dwLowDateTime == 0 ? ticksOf(start) : 0;
}

// The number that `text` begins with, up to `end`; `text` is what follows. False without one.
bool takeNumber(std::wstring& text, wchar_t end, std::uint64_t& number) {
  const std::size_t cut = text.find(end);
  if (cut == 0 || cut == std::wstring::npos) return false;
  if (text.substr(0, cut).find_first_not_of(L"0123456789") != std::wstring::npos) return false;
  number = std::wcstoull(text.c_str(), nullptr, 10);
  text.erase(0, cut + 1);
  return true;
}

}  // namespace

std::wstring hiddenCopyPrefix() {
  const DWORD process = ::GetCurrentProcessId();
  return std::wstring(kBegin) + std::to_wstring(process) + L"-" +
         std::to_wstring(startOf(process)) + L"-";
}

std::wstring hiddenCopyName(const std::wstring& prefix, std::uint64_t number) {
  return prefix + std::to_wstring(number) + std::wstring(kEnd);
}

bool isCopyLeftover(NativeView name) {
  if (!name.starts_with(kBegin) || !name.ends_with(kEnd)) return false;
  std::wstring rest(name.substr(kBegin.size()));
  std::uint64_t process = 0;
  std::uint64_t start = 0;
  std::uint64_t number = 0;
  const bool ours = takeNumber(rest, L'-', process) && takeNumber(rest, L'-', start) &&
                    takeNumber(rest, L'.', number);
  if (!ours || rest != kEnd.substr(1)) return false;
  if (process == ::GetCurrentProcessId()) return true;
  return startOf(static_cast<DWORD>(process)) != static_cast<std::int64_t>(start);
}
