// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QIcon>

#include "text/Text.h"

// The pictures that are built into the program.

// The image of `key` in the main window's image list. Null when there is none.
QIcon imageOfKey(TextView key);

// The program's own icon.
QIcon programIcon();
