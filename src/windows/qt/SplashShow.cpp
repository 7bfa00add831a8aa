// SPDX-License-Identifier: GPL-3.0-or-later
#include "windows/qt/SplashShow.h"

#include <utility>

#include "windows/qt/Transparence.h"

SplashShow::SplashShow(std::function<SplashContents()> contents, std::function<double()> clock,
                       QObject* parent)
    : QObject(parent),
      contents_(std::move(contents)),
      clock_(std::move(clock)),
      TimerSplash_(this) {
  TimerSplash_.setObjectName(QStringLiteral("TimerSplash"));
  TimerSplash_.setInterval(SplashFade::kIntervalMilliseconds);
  connect(&TimerSplash_, &QTimer::timeout, this, &SplashShow::TimerSplash_Timer);
}

SplashShow::~SplashShow() { delete window_; }

void SplashShow::start() {
  fade_.start(clock_());
  TimerSplash_.start();
}

void SplashShow::TimerSplash_Timer() {
  const SplashFade::Step step = fade_.tick(clock_());
  if (step.ends) {
    TimerSplash_.stop();
    if (window_) window_->close();
    return;
  }
  if (step.showsNow && !window_) window_ = new frmSplash(contents_());
  if (!window_) return;  // a click has unloaded it; the seconds run on

  RendreTransparent(*window_, step.opacity);
  if (!step.showsNow) return;
  window_->show();
  window_->raise();
}
