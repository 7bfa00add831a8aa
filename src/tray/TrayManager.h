// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

class QObject;
class QWidget;

// True when somebody shows tray icons now. It asks the desktop itself, since the toolkit must not
// be asked before the answer is yes.
bool trayManagerStands();

// From now on the desktop's news of a tray that came call the slot look() of `listener`, where the
// desktop tells such news.
void announceTrays(QObject* listener);

// To be called when the tray's menu has popped up: gives it the keyboard, and takes it away at a
// click elsewhere, where the system does so for an active window alone.
void menuPoppedUp(QWidget& menu);
