// SPDX-License-Identifier: GPL-3.0-or-later
#include "tray/TrayHost.h"

#include <utility>

#include "tray/TrayManager.h"

namespace {

constexpr int kPollMilliseconds = 2000;
constexpr int kGraceMilliseconds = 5000;

}  // namespace

TrayHost::TrayHost(std::function<bool()> stands, std::function<void()> onTray,
                   std::function<void()> onNone, QObject* parent)
    : QObject(parent),
      stands_(std::move(stands)),
      onTray_(std::move(onTray)),
      onNone_(std::move(onNone)) {
  poll_.setInterval(kPollMilliseconds);
  connect(&poll_, &QTimer::timeout, this, &TrayHost::look);
  grace_.setSingleShot(true);
  grace_.setInterval(kGraceMilliseconds);
  connect(&grace_, &QTimer::timeout, this, [this] {
    look();
    if (!found_) onNone_();
  });
}

void TrayHost::start() {
  look();
  if (found_) return;
  announceTrays(this);
  poll_.start();
  grace_.start();
}

void TrayHost::look() {
  if (found_ || !stands_()) return;
  found_ = true;
  poll_.stop();
  grace_.stop();
  onTray_();
}
