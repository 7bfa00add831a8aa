// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>
#include <windows.h>

// The event of a process that is set when it is to end. It is the session's own: what ends a
// program is started on the same desktop.
inline std::wstring endRequestName(DWORD processId) {
  return L"Local\\Tavrollo-" + std::to_wstring(processId) + L"-end";
}
