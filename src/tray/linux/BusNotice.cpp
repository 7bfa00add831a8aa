// SPDX-License-Identifier: GPL-3.0-or-later
#include "tray/linux/BusNotice.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QStringList>
#include <QVariantMap>
#include <utility>

namespace {

constexpr qint32 kShownMilliseconds = 5000;

}  // namespace

void BusNotice::show(const QString& text) {
  if (pending_) {
    next_ = text;
    return;
  }
  const QString name = QStringLiteral("org.freedesktop.Notifications");
  QDBusMessage call = QDBusMessage::createMethodCall(
      name, QStringLiteral("/org/freedesktop/Notifications"), name, QStringLiteral("Notify"));
  // The body is marked-up text.
  call << QStringLiteral("Tavrollo") << id_ << QStringLiteral("tavrollo")
       << QStringLiteral("Tavrollo") << text.toHtmlEscaped() << QStringList() << QVariantMap()
       << kShownMilliseconds;
  pending_ = true;
  auto* answer = new QDBusPendingCallWatcher(QDBusConnection::sessionBus().asyncCall(call), this);
  connect(answer, &QDBusPendingCallWatcher::finished, this, &BusNotice::answered);
}

void BusNotice::answered(QDBusPendingCallWatcher* call) {
  const QDBusPendingReply<quint32> reply = *call;
  call->deleteLater();
  pending_ = false;
  if (reply.isValid()) id_ = reply.value();
  if (next_) show(*std::exchange(next_, std::nullopt));
}

std::unique_ptr<DesktopNotice> desktopNoticeFor(const QString& platformName) {
  if (windowsPlaceThemselves(platformName)) return nullptr;
  return std::make_unique<BusNotice>();
}
