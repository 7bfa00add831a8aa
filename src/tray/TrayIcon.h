// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>
#include <QSystemTrayIcon>
#include <QTimer>
#include <array>

#include "text/Text.h"
#include "tray/IconAnimation.h"

class TrayMenu;

// The icon in the notification area: its pictures and their animation, its tip, and the mouse
// messages that pop the menu up. To be made only once a tray is known to be there: the toolkit
// decides at the first one, and for good, how it talks to trays.
// Qt does this on every system: on Windows it keeps the tray's record, and the tip it is given has
// at most 64 characters.
class TrayIcon : public QObject {
  Q_OBJECT

 public:
  // `tip` is the tip text as it stands in its fixed field.
  TrayIcon(TrayMenu& menu, Text tip, QObject* parent = nullptr);

  // Adds the icon at the first call and changes it afterwards: the picture of frame 0 to 8, and
  // with frame 0 the tip.
  void ApplicIcone(std::int16_t frame);

  // Starts TimerIcon, whose next tick shows `frame`.
  void animate(std::int16_t frame);

  // Keeps the icon moving for two seconds.
  void showCommandHandled();

  // Hands the menu to the tray, which then shows it itself at a right click. Done from the start
  // where windows cannot place themselves.
  void letTrayShowMenu();

  // Takes the icon out of the tray.
  void remove();

  // The main window's mouse handler: x in twips is the tray's message.
  void mouseMoved(double x);

 private:
  void TimerIcon_Timer();
  void iconActivated(QSystemTrayIcon::ActivationReason reason);

  TrayMenu& menu_;
  Text tip_;
  std::array<QIcon, 9> images_;
  QSystemTrayIcon icon_;
  bool firstTime_ = true;
  IconAnimation animation_;
  QTimer TimerIcon_;
  QTimer commandShown_;
};
