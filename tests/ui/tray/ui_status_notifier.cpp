// SPDX-License-Identifier: GPL-3.0-or-later
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QStringList>
#include <QThread>
#include <atomic>
#include <memory>
#include <mutex>

#include "tray/TrayHost.h"
#include "tray/TrayIcon.h"
#include "tray/TrayManager.h"
#include "tray/TrayMenu.h"
#include "tray/TrayMessages.h"
#include "ui/UiMain.h"

// The part of a desktop that shows status notifier items. It answers from a thread of its own,
// since the toolkit blocks while it asks.
class Watcher : public QObject {
  Q_OBJECT
  Q_CLASSINFO("D-Bus Interface", "org.kde.StatusNotifierWatcher")
  Q_PROPERTY(bool IsStatusNotifierHostRegistered READ isHosted)

 public:
  bool isHosted() const { return hosted; }
  std::atomic<bool> hosted = false;
  QString item() const {
    const std::lock_guard held(mutex_);
    return item_;
  }

 public Q_SLOTS:
  void RegisterStatusNotifierItem(const QString& item) {
    const std::lock_guard held(mutex_);
    item_ = item;
  }

 Q_SIGNALS:
  void StatusNotifierHostRegistered();

 private:
  mutable std::mutex mutex_;
  QString item_;
};

namespace {

const QString kWatcher = QStringLiteral("org.kde.StatusNotifierWatcher");

// The bus keeps hold of the watcher, so there is one for the whole program.
struct Bus {
  Bus() {
    connection.registerObject(QStringLiteral("/StatusNotifierWatcher"), &watcher,
                              QDBusConnection::ExportAllContents);
    watcher.moveToThread(&thread);
    thread.start();
  }

  QDBusConnection connection =
      QDBusConnection::connectToBus(QDBusConnection::SessionBus, QStringLiteral("desktop"));
  Watcher watcher;
  QThread thread;
};

Bus& theBus() {
  static Bus& bus = *new Bus;
  return bus;
}

// A desktop that may have a watcher, for as long as this lives.
struct Desktop {
  Desktop() { watcher.hosted = false; }
  ~Desktop() { bus.unregisterService(kWatcher); }
  bool appear() { return bus.registerService(kWatcher); }

  QDBusConnection& bus = theBus().connection;
  Watcher& watcher = theBus().watcher;
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
  TrayHost host(
      trayManagerStands, [&] { ++found; }, [] {});
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
  TrayHost host(
      trayManagerStands, [&] { ++found; }, [] {});
  host.start();
  ASSERT_EQ(found, 0);
  desktop.watcher.hosted = true;
  QMetaObject::invokeMethod(&desktop.watcher, &Watcher::StatusNotifierHostRegistered);
  EXPECT_TRUE(waitUntil([&] { return found > 0; }, 1500));
}

TEST(StatusNotifier, IconRegistersAndItsActivationPopsTheMenuUp) {
  Desktop desktop;
  desktop.watcher.hosted = true;
  ASSERT_TRUE(desktop.appear());
  TrayMenu menu({}, [](TextView) {});
  TrayIcon icon(menu, tipText({1, 0, 0}));
  icon.ApplicIcone(0);
  ASSERT_TRUE(waitUntil([&] { return !desktop.watcher.item().isEmpty(); }));

  for (const char* asked : {"Activate", "ContextMenu"}) {
    QDBusMessage call = QDBusMessage::createMethodCall(
        desktop.watcher.item(), QStringLiteral("/StatusNotifierItem"),
        QStringLiteral("org.kde.StatusNotifierItem"), QString::fromLatin1(asked));
    call << 10 << 10;
    desktop.bus.send(call);
    EXPECT_TRUE(waitUntil([&] { return menu.menu().isVisible(); })) << asked;
    menu.menu().close();
  }
}

TEST(StatusNotifier, AMenuHandedToTheTrayIsExported) {
  Desktop desktop;
  desktop.watcher.hosted = true;
  ASSERT_TRUE(desktop.appear());
  TrayMenu menu({}, [](TextView) {});
  TrayIcon icon(menu, tipText({1, 0, 0}));
  icon.letTrayShowMenu();
  desktop.watcher.RegisterStatusNotifierItem(QString());
  icon.ApplicIcone(0);
  ASSERT_TRUE(waitUntil([&] { return !desktop.watcher.item().isEmpty(); }));

  QDBusMessage call = QDBusMessage::createMethodCall(
      desktop.watcher.item(), QStringLiteral("/MenuBar"), QStringLiteral("com.canonical.dbusmenu"),
      QStringLiteral("GetLayout"));
  call << 0 << -1 << QStringList{QStringLiteral("label")};
  QDBusPendingCallWatcher answer(desktop.bus.asyncCall(call));
  ASSERT_TRUE(waitUntil([&] { return answer.isFinished(); }));
  EXPECT_FALSE(answer.isError()) << answer.error().message().toStdString();
}

#include "ui_status_notifier.moc"
