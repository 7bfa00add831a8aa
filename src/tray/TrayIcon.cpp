// SPDX-License-Identifier: GPL-3.0-or-later
#include "tray/TrayIcon.h"

#include <QGuiApplication>
#include <utility>

#include "platform/qt/QtText.h"
#include "tray/DesktopNotice.h"
#include "tray/TrayMenu.h"
#include "tray/TrayMessages.h"
#include "windows/Twips.h"
#include "windows/qt/Drawing.h"

namespace {

// The padding belongs to the tip's field; a tray would show it as an empty stretch.
QString shownTip(const Text& field) {
  const std::size_t end = field.find_last_not_of(u' ');
  return toQt(TextView(field).substr(0, end + 1));
}

}  // namespace

TrayIcon::TrayIcon(TrayMenu& menu, Text tip, QObject* parent)
    : QObject(parent), menu_(menu), tip_(std::move(tip)) {
  for (std::size_t i = 0; i < images_.size(); ++i) {
    images_.at(i) = drawingIcon(QStringLiteral("tray/frame%1").arg(i + 1));
  }
  TimerIcon_.setParent(this);
  TimerIcon_.setObjectName(QStringLiteral("TimerIcon"));
  TimerIcon_.setInterval(IconAnimation::kIntervalMilliseconds);
  connect(&TimerIcon_, &QTimer::timeout, this, &TrayIcon::TimerIcon_Timer);

  commandShown_.setSingleShot(true);
  commandShown_.setInterval(kCommandAnimationMilliseconds);
  connect(&commandShown_, &QTimer::timeout, this, [this] { animate(0); });

  icon_.setParent(this);
  icon_.setObjectName(QStringLiteral("trayIcon"));
  connect(&icon_, &QSystemTrayIcon::activated, this, &TrayIcon::iconActivated);
  if (!windowsPlaceThemselves(QGuiApplication::platformName())) letTrayShowMenu();
}

void TrayIcon::letTrayShowMenu() { icon_.setContextMenu(&menu_.menu()); }

void TrayIcon::ApplicIcone(std::int16_t frame) {
  if (frame < 0 || static_cast<std::size_t>(frame) >= images_.size()) return;
  if (firstTime_ || frame == 0) icon_.setToolTip(shownTip(tip_));
  icon_.setIcon(images_.at(static_cast<std::size_t>(frame)));
  if (!firstTime_) return;
  icon_.show();
  firstTime_ = false;
}

void TrayIcon::animate(std::int16_t frame) {
  animation_.start(frame);
  if (!TimerIcon_.isActive()) TimerIcon_.start();
}

void TrayIcon::showCommandHandled() {
  animate(kCommandAnimationFrame);
  commandShown_.start();
}

void TrayIcon::remove() {
  TimerIcon_.stop();
  commandShown_.stop();
  icon_.hide();
}

void TrayIcon::mouseMoved(double x) {
  if (popsMenuUp(trayMessage(x, kTwipsPerPixel))) menu_.popUpAtCursor();
}

void TrayIcon::TimerIcon_Timer() {
  const IconAnimation::Step step = animation_.tick();
  ApplicIcone(step.frame);
  if (!step.goesOn) TimerIcon_.stop();
}

void TrayIcon::iconActivated(QSystemTrayIcon::ActivationReason reason) {
  const auto arrives = [this](int message) { mouseMoved(twipsFromPixels(message)); };
  switch (reason) {
    case QSystemTrayIcon::Trigger:
      arrives(kLeftButtonDown);
      arrives(kLeftButtonUp);
      return;
    case QSystemTrayIcon::DoubleClick: arrives(kLeftDoubleClick); return;
    case QSystemTrayIcon::Context: arrives(kRightButtonDown); return;
    case QSystemTrayIcon::MiddleClick:
    case QSystemTrayIcon::Unknown: return;
  }
}
