// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QWidget>

// Takes the close command out of the window's frame and its menu, so that the window is left by its
// own button. To be called before it is shown. True when it could be.
// Qt does this on every system: on Windows by the window's system menu.
bool EnleverFermer(QWidget& window);
