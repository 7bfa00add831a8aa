// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>
#include <QString>
#include <memory>
#include <optional>

class QDBusPendingCallWatcher;

// A notice as the desktop's own notification, where windows cannot place themselves. A notice that
// comes while one is up takes its place.
class DesktopNotice : public QObject {
  Q_OBJECT

 public:
  explicit DesktopNotice(QObject* parent = nullptr) : QObject(parent) {}

  // Nothing happens on a desktop without notifications.
  void show(const QString& text);

 private:
  void answered(QDBusPendingCallWatcher* call);

  quint32 id_ = 0;
  bool pending_ = false;
  std::optional<QString> next_;  // came before the desktop had answered for the last one
};

// False on a window platform (QGuiApplication::platformName) whose windows cannot say where on the
// screen they go.
bool windowsPlaceThemselves(const QString& platformName);

// The desktop's notification for a window platform whose windows cannot place
// themselves; nothing for the others.
std::unique_ptr<DesktopNotice> desktopNoticeFor(const QString& platformName);
