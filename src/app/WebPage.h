// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "config/Settings.h"
#include "platform/Shell.h"

// How a page of the web application is opened: `name` is its path below the application's root,
// with separators of either kind.
ShellRequest webPageRequest(const Settings& settings, TextView name);
