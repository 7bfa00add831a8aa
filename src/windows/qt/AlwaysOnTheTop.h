// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QWidget>

// Puts a window above all others, or makes it an ordinary one again. Its place, its size and
// whether it is shown stay as they are.
// Qt does this on every system: on Windows it makes the window a topmost one.
void MettreAuPremierPlan(QWidget& window, bool onTop);
