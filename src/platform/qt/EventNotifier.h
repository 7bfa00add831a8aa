// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>
#include <cstdint>
#include <functional>
#include <memory>

// Tells the event loop of what the system tells by a descriptor that becomes readable or, on
// Windows, by an event that is set.
class EventNotifier {
 public:
  // `event` as Shell::eventsFd and TerminationRequests::eventsFd give it; with -1 nothing ever
  // happens. It must outlive this.
  EventNotifier(std::intptr_t event, const std::function<void()>& happened);

 private:
  std::unique_ptr<QObject> notifier_;
};
