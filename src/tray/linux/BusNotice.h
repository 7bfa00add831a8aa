// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>
#include <optional>

#include "tray/DesktopNotice.h"

class QDBusPendingCallWatcher;

// The notification of a desktop that takes them from its message bus. Nothing happens on one
// without.
class BusNotice : public QObject, public DesktopNotice {
  Q_OBJECT

 public:
  explicit BusNotice(QObject* parent = nullptr) : QObject(parent) {}

  void show(const QString& text) override;

 private:
  void answered(QDBusPendingCallWatcher* call);

  quint32 id_ = 0;
  bool pending_ = false;
  std::optional<QString> next_;  // came before the desktop had answered for the last one
};
