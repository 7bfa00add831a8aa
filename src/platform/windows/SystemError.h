// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <windows.h>

#include "platform/Failure.h"

// A program that wants more rights than its starter has. Not every header has the number.
inline constexpr DWORD kElevationRequired = 740;

// The failure for a value of GetLastError; 0 is success.
Failure failureFromSystem(DWORD error);

inline Failure lastFailure() { return failureFromSystem(::GetLastError()); }
