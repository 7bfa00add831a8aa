// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/qt/EventNotifier.h"

#include <QSocketNotifier>

EventNotifier::EventNotifier(std::intptr_t event, const std::function<void()>& happened) {
  if (event == -1) return;
  auto notifier = std::make_unique<QSocketNotifier>(event, QSocketNotifier::Read);
  QObject::connect(notifier.get(), &QSocketNotifier::activated, [happened] { happened(); });
  notifier_ = std::move(notifier);
}
