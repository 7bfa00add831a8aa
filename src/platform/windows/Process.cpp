// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/windows/Process.h"

#include <algorithm>
#include <cerrno>

#include "platform/Processes.h"
#include "platform/windows/EndRequest.h"
#include "platform/windows/SystemError.h"
#include "platform/windows/Wide.h"
#include "text/Paths.h"

namespace {

constexpr int kEndedByForce = 1;

bool needsQuotes(const std::wstring& word) {
  return word.empty() || word.find_first_of(L" \t\n\v\"") != std::wstring::npos;
}

}  // namespace

// Backslashes mean themselves except in front of a quotation mark, where each must be doubled.
std::wstring quotedWord(const std::wstring& word) {
  if (!needsQuotes(word)) return word;
  std::wstring quoted = L"\"";
  std::size_t backslashes = 0;
  for (const wchar_t unit : word) {
    if (unit == L'"') quoted.append(backslashes + 1, L'\\');
    backslashes = unit == L'\\' ? backslashes + 1 : 0;
    quoted += unit;
  }
  return quoted.append(backslashes, L'\\') + L"\"";
}

std::wstring commandLineOf(const std::vector<Text>& arguments) {
  std::wstring line;
  for (const Text& argument : arguments) {
    if (!line.empty()) line += L' ';
    line += quotedWord(wide(argument));
  }
  return line;
}

DWORD startCommand(const std::wstring& commandLine, const std::wstring& folder, Handle* process) {
  STARTUPINFOW start{};
  start.cb = sizeof start;
  start.dwFlags = STARTF_USESHOWWINDOW;
  start.wShowWindow = SW_SHOWNORMAL;
  PROCESS_INFORMATION started{};
  std::wstring line = commandLine;  // the call may write to it
  if (!::CreateProcessW(nullptr, line.data(), nullptr, nullptr, FALSE, 0, nullptr,
                        folder.empty() ? nullptr : folder.c_str(), &start, &started)) {
    return ::GetLastError();
  }
  ::CloseHandle(started.hThread);
  Handle handle(started.hProcess);
  if (process) *process = std::move(handle);
  return ERROR_SUCCESS;
}

Text executableName(int processId) {
  const Handle process(
      ::OpenProcess(PROCESS_QUERY_LIMITED_INFORMATION, FALSE, static_cast<DWORD>(processId)));
  std::wstring path(32768, L'\0');
  auto length = static_cast<DWORD>(path.size());
  if (!process.isOpen() || !::QueryFullProcessImageNameW(process.get(), 0, path.data(), &length)) {
    return {};
  }
  return nameOf(fromWide(path.substr(0, length)));
}

bool askToEnd(int processId) {
  const Handle event(::OpenEventW(EVENT_MODIFY_STATE, FALSE,
                                  endRequestName(static_cast<DWORD>(processId)).c_str()));
  return event.isOpen() && ::SetEvent(event.get()) != 0;
}

void forceToEnd(int processId) {
  const Handle process(::OpenProcess(PROCESS_TERMINATE, FALSE, static_cast<DWORD>(processId)));
  if (process.isOpen()) ::TerminateProcess(process.get(), kEndedByForce);
}

bool isStartable(const Text& path) {
  DWORD kind = 0;
  return ::GetBinaryTypeW(wide(path).c_str(), &kind) != 0;
}

Failure startDetached(const std::vector<Text>& arguments) {
  if (arguments.empty()) return failureFromErrno(ENOENT);
  const DWORD error = startCommand(commandLineOf(arguments), {});
  return error == ERROR_SUCCESS ? Failure() : about(failureFromSystem(error), arguments.front());
}
