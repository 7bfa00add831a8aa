// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>
#include <QPointer>
#include <QTimer>
#include <functional>

#include "windows/SplashFade.h"
#include "windows/frmSplash.h"

// Runs the splash window: TimerSplash, the fade, and the window from its loading to its end.
class SplashShow : public QObject {
  Q_OBJECT

 public:
  // `contents` is asked for each time the window is loaded; `clock` gives seconds since midnight.
  SplashShow(std::function<SplashContents()> contents, std::function<double()> clock,
             QObject* parent = nullptr);
  ~SplashShow() override;

  // Starts the show, or starts it over.
  void start();

 private:
  void TimerSplash_Timer();

  std::function<SplashContents()> contents_;
  std::function<double()> clock_;
  QTimer TimerSplash_;
  SplashFade fade_;
  QPointer<frmSplash> window_;
};
