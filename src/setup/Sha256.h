// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>
#include <string_view>

// The SHA-256 digest of `bytes`, as 64 hexadecimal digits in lower case.
std::string sha256(std::string_view bytes);
