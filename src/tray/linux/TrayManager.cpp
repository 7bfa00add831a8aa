// SPDX-License-Identifier: GPL-3.0-or-later
#include "tray/TrayManager.h"

#include <xcb/xcb.h>

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusServiceWatcher>
#include <QDBusVariant>
#include <QGuiApplication>
#include <cstdlib>
#include <memory>
#include <string>

namespace {

constexpr int kAnswerMilliseconds = 500;

struct Freed {
  void operator()(void* reply) const { std::free(reply); }
};
template <typename Reply>
using Owned = std::unique_ptr<Reply, Freed>;

bool statusNotifierHostStands() {
  const QString watcher = QStringLiteral("org.kde.StatusNotifierWatcher");
  QDBusConnection bus = QDBusConnection::sessionBus();
  if (!bus.isConnected() || !bus.interface()->isServiceRegistered(watcher)) return false;

  QDBusMessage question = QDBusMessage::createMethodCall(
      watcher, QStringLiteral("/StatusNotifierWatcher"),
      QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("Get"));
  question << watcher << QStringLiteral("IsStatusNotifierHostRegistered");
  const QDBusMessage answer = bus.call(question, QDBus::Block, kAnswerMilliseconds);
  if (answer.type() != QDBusMessage::ReplyMessage || answer.arguments().isEmpty()) return false;
  return answer.arguments().first().value<QDBusVariant>().variant().toBool();
}

bool x11TrayStands() {
  const auto* x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
  xcb_connection_t* connection = x11 ? x11->connection() : nullptr;
  if (!connection) return false;  // the platform "offscreen" has the one without the other

  int display = 0;
  int screen = 0;
  char* host = nullptr;
  if (xcb_parse_display(nullptr, &host, &display, &screen)) std::free(host);
  const std::string name = "_NET_SYSTEM_TRAY_S" + std::to_string(screen);

  const Owned<xcb_intern_atom_reply_t> selection(xcb_intern_atom_reply(
      connection,
      xcb_intern_atom(connection, false, static_cast<std::uint16_t>(name.size()), name.c_str()),
      nullptr));
  if (!selection) return false;
  const Owned<xcb_get_selection_owner_reply_t> owner(xcb_get_selection_owner_reply(
      connection, xcb_get_selection_owner(connection, selection->atom), nullptr));
  return owner && owner->owner != XCB_WINDOW_NONE;
}

}  // namespace

bool trayManagerStands() { return statusNotifierHostStands() || x11TrayStands(); }

void menuPoppedUp(QWidget& /*menu*/) {}

void announceTrays(QObject* listener) {
  QDBusConnection bus = QDBusConnection::sessionBus();
  if (!bus.isConnected()) return;
  const QString watcher = QStringLiteral("org.kde.StatusNotifierWatcher");
  bus.connect(watcher, QStringLiteral("/StatusNotifierWatcher"), watcher,
              QStringLiteral("StatusNotifierHostRegistered"), listener, SLOT(look()));
  auto* services = new QDBusServiceWatcher(listener);
  services->setConnection(bus);
  services->addWatchedService(watcher);
  services->setWatchMode(QDBusServiceWatcher::WatchForRegistration);
  QObject::connect(services, SIGNAL(serviceRegistered(QString)), listener, SLOT(look()));
}
