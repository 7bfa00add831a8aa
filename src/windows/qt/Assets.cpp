// SPDX-License-Identifier: GPL-3.0-or-later
#include "windows/qt/Assets.h"

#include "platform/qt/QtText.h"
#include "windows/qt/Drawing.h"

QIcon imageOfKey(TextView key) { return drawingIcon(QStringLiteral("images/") + toQt(key)); }

QIcon programIcon() { return drawingIcon(QStringLiteral("tavrollo")); }
