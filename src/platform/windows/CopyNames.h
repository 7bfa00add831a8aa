// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <string>

// The hidden name under which this process writes a copy tells whose it is, so that others know
// when it is a leftover.
std::wstring hiddenCopyPrefix();
std::wstring hiddenCopyName(const std::wstring& prefix, std::uint64_t number);
