// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/Desktop.h"

#include "platform/windows/EndRequest.h"
#include "platform/windows/Process.h"
#include "platform/windows/RegistryDefaultBrowser.h"
#include "platform/windows/Wide.h"
#include "platform/windows/WindowsShell.h"

Text parameterWord(const Text& word) { return fromWide(quotedWord(wide(word))); }

Text fileWord(const Text& fileName) { return parameterWord(fileName); }

std::unique_ptr<Shell> makeShell(std::function<void(const Text&)> trace) {
  return std::make_unique<WindowsShell>(std::move(trace));
}

std::unique_ptr<DefaultBrowser> makeDefaultBrowser() {
  return std::make_unique<RegistryDefaultBrowser>();
}

TerminationRequests::TerminationRequests() {
  const std::wstring name = endRequestName(::GetCurrentProcessId());
  if (const HANDLE event = ::CreateEventW(nullptr, TRUE, FALSE, name.c_str())) {
    fd_ = reinterpret_cast<std::intptr_t>(event);
  }
}

TerminationRequests::~TerminationRequests() {
  if (fd_ != -1) ::CloseHandle(reinterpret_cast<HANDLE>(fd_));
}
