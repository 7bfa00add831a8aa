// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/qt/EventNotifier.h"

#include <QWinEventNotifier>

EventNotifier::EventNotifier(std::intptr_t event, const std::function<void()>& happened) {
  if (event == -1) return;
  auto notifier = std::make_unique<QWinEventNotifier>(reinterpret_cast<void*>(event));
  QObject::connect(notifier.get(), &QWinEventNotifier::activated, [happened] { happened(); });
  notifier_ = std::move(notifier);
}
