// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/System.h"

// Name and version that an os-release file tells; what it does not tell is "".
SystemDescription descriptionOfRelease(std::string_view bytes);
