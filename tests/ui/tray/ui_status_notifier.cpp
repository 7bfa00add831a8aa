// SPDX-License-Identifier: GPL-3.0-or-later
#include <QDBusConnection>
#include <QDBusMessage>
#include <QStringList>
#include <QSystemTrayIcon>
#include <memory>

#include "tray/TrayHost.h"
#include "tray/TrayIcon.h"
#include "tray/TrayManager.h"
#include "tray/TrayMenu.h"
#include "tray/TrayMessages.h"
#include "ui/UiMain.h"

// The part of a desktop that shows status notifier items.
class Watcher : public QObject {
  Q_OBJECT
  Q_CLASSINFO("D-Bus Interface", "org.kde.StatusNotifierWatcher")
  Q_PROPERTY(bool IsStatusNotifierHostRegistered MEMBER hosted)

 public:
  bool hosted = false;
  QStringList items;

 public Q_SLOTS:
  void RegisterStatusNotifierItem(const QString& item) { items << item; }

 Q_SIGNALS:
  void StatusNotifierHostRegistered();
};

namespace {

struct Desktop {
  Desktop() {
    QDBusConnection::sessionBus().registerObject(
        QStringLiteral("/StatusNotifierWatcher"), &watcher,
        QDBusConnection::ExportAllContents);
  }
  bool appear() {
    return QDBusConnection::sessionBus().registerService(
        QStringLiteral("org.kde.StatusNotifierWatcher"));
  }
  ~Desktop() {
    QDBusConnection bus = QDBusConnection::sessionBus();
    bus.unregisterService(QStringLiteral("org.kde.StatusNotifierWatcher"));
    bus.unregisterObject(QStringLiteral("/StatusNotifierWatcher"));
  }
  Watcher watcher;
};

}  // namespace

TEST(StatusNotifier, AWatcherWithoutAHostIsNoTray) {
  Desktop desktop;
  EXPECT_FALSE(trayManagerStands());
  ASSERT_TRUE(desktop.appear());
  EXPECT_FALSE(trayManagerStands());
  desktop.watcher.hosted = true;
  EXPECT_TRUE(trayManagerStands());
}

TEST(StatusNotifier, AHostThatAppearsIsNoticedBeforeTheNextPoll) {
  Desktop desktop;
  int found = 0;
  TrayHost host(trayManagerStands, [&] { ++found; }, [] {});
  host.start();
  ASSERT_EQ(found, 0);
  desktop.watcher.hosted = true;
  ASSERT_TRUE(desktop.appear());
  EXPECT_TRUE(waitUntil([&] { return found > 0; }, 1500));
}

TEST(StatusNotifier, AHostThatRegistersWithAWatcherIsNoticedBeforeTheNextPoll) {
  Desktop desktop;
  ASSERT_TRUE(desktop.appear());
  int found = 0;
  TrayHost host(trayManagerStands, [&] { ++found; }, [] {});
  host.start();
  ASSERT_EQ(found, 0);
  desktop.watcher.hosted = true;
  Q_EMIT desktop.watcher.StatusNotifierHostRegistered();
  EXPECT_TRUE(waitUntil([&] { return found > 0; }, 1500));
}

TEST(StatusNotifier, IconRegistersAndItsActivationPopsTheMenuUp) {
  Desktop desktop;
  desktop.watcher.hosted = true;
  ASSERT_TRUE(desktop.appear());
  TrayMenu menu({}, [](TextView) {});
  TrayIcon icon(menu, tipText(1, 0, 0));
  icon.ApplicIcone(0);
  ASSERT_TRUE(waitUntil([&] { return !desktop.watcher.items.isEmpty(); }));

  for (const char* asked : {"Activate", "ContextMenu"}) {
    QDBusMessage call = QDBusMessage::createMethodCall(
        desktop.watcher.items.first(), QStringLiteral("/StatusNotifierItem"),
        QStringLiteral("org.kde.StatusNotifierItem"), QString::fromLatin1(asked));
    call << 10 << 10;
    QDBusConnection::sessionBus().send(call);
    EXPECT_TRUE(waitUntil([&] { return menu.menu().isVisible(); })) << asked;
    menu.menu().close();
  }
}

#include "ui_status_notifier.moc"
