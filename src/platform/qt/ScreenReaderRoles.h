// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QAccessible>
#include <QWidget>

// What screen readers say that a widget is. The toolkit tells them of dialogs and of its own
// controls alone: any other window, and what we paint ourselves, would be a nameless part of
// something.

// From now on `widget` has that role. To be called before anything else is done to it.
void setScreenReaderRole(QWidget& widget, QAccessible::Role role);

// From now on these roles are told, and plain windows are windows.
void tellScreenReaderRoles();
