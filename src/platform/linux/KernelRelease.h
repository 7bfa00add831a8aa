// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string_view>

#include "platform/System.h"

// The version in a kernel's release ("6.1.0-13-amd64"); what is no number there counts as 0.
SystemVersion versionOfRelease(std::string_view release);
