// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>
#include <QTimer>
#include <functional>

// Waits for a tray. A desktop may start its panel after this program, or have none at all.
class TrayHost : public QObject {
  Q_OBJECT

 public:
  // `stands` tells whether there is a tray now. `onTray` is called once, as soon as there is one;
  // `onNone` once, when the time of grace passes without.
  TrayHost(std::function<bool()> stands, std::function<void()> onTray, std::function<void()> onNone,
           QObject* parent = nullptr);

  // Looks at once (onTray may be called before this returns) and goes on looking.
  void start();

  // Looks now.
  Q_SLOT void look();

 private:
  std::function<bool()> stands_;
  std::function<void()> onTray_;
  std::function<void()> onNone_;
  QTimer poll_;
  QTimer grace_;
  bool found_ = false;
};
