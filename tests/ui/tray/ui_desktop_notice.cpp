// SPDX-License-Identifier: GPL-3.0-or-later
#include <QDBusConnection>
#include <QObject>
#include <QStringList>
#include <QTimer>
#include <QVariantMap>
#include <vector>

#include "tray/frmInfos.h"
#include "tray/linux/BusNotice.h"
#include "ui/UiMain.h"

// A desktop's notification service that keeps what it was asked for.
class Notifications : public QObject {
  Q_OBJECT
  Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Notifications")

 public:
  struct Asked {
    QString program;
    uint replaces = 0;
    QString summary;
    QString body;
    int milliseconds = 0;
  };
  std::vector<Asked> asked;

 public Q_SLOTS:
  uint Notify(const QString& program, uint replaces, const QString&, const QString& summary,
              const QString& body, const QStringList&, const QVariantMap&, int milliseconds) {
    asked.push_back({program, replaces, summary, body, milliseconds});
    return replaces ? replaces : 41 + static_cast<uint>(asked.size());
  }
};

namespace {

// The service stands on the bus for as long as this lives.
struct Desktop {
  Desktop() {
    QDBusConnection bus = QDBusConnection::sessionBus();
    bus.registerObject(QStringLiteral("/org/freedesktop/Notifications"), &service,
                       QDBusConnection::ExportAllSlots);
    stands = bus.registerService(QStringLiteral("org.freedesktop.Notifications"));
  }
  ~Desktop() {
    QDBusConnection bus = QDBusConnection::sessionBus();
    bus.unregisterService(QStringLiteral("org.freedesktop.Notifications"));
    bus.unregisterObject(QStringLiteral("/org/freedesktop/Notifications"));
  }
  bool hears(std::size_t count) {
    return waitUntil([this, count] { return service.asked.size() >= count; });
  }

  Notifications service;
  bool stands = false;
};

}  // namespace

TEST(BusNotice, AsksTheDesktopForFiveSeconds) {
  Desktop desktop;
  ASSERT_TRUE(desktop.stands);
  BusNotice notice;
  notice.show(QStringLiteral("Raccourci Créé"));
  ASSERT_TRUE(desktop.hears(1));
  EXPECT_EQ(desktop.service.asked[0].program, QStringLiteral("Tavrollo"));
  EXPECT_EQ(desktop.service.asked[0].summary, QStringLiteral("Tavrollo"));
  EXPECT_EQ(desktop.service.asked[0].body, QStringLiteral("Raccourci Créé"));
  EXPECT_EQ(desktop.service.asked[0].milliseconds, 5000);
  EXPECT_EQ(desktop.service.asked[0].replaces, 0u);
}

TEST(BusNotice, ALaterNoticeTakesThePlaceOfTheFirst) {
  Desktop desktop;
  BusNotice notice;
  // The second comes before the desktop has answered for the first.
  notice.show(QStringLiteral("a"));
  notice.show(QStringLiteral("b"));
  ASSERT_TRUE(desktop.hears(2));
  EXPECT_EQ(desktop.service.asked[1].body, QStringLiteral("b"));
  EXPECT_EQ(desktop.service.asked[1].replaces, 42u);
}

TEST(BusNotice, EscapesWhatTheDesktopWouldTakeForMarkup) {
  Desktop desktop;
  BusNotice notice;
  notice.show(QStringLiteral("<b> & c"));
  ASSERT_TRUE(desktop.hears(1));
  EXPECT_EQ(desktop.service.asked[0].body, QStringLiteral("&lt;b&gt; &amp; c"));
}

TEST(BusNotice, ADesktopWithoutNotificationsIsNoHindrance) {
  BusNotice notice;
  notice.show(QStringLiteral("nobody hears this"));
  notice.show(QStringLiteral("nor this"));
  Desktop desktop;
  // Both earlier calls are answered with an error before this one is sent.
  notice.show(QStringLiteral("this"));
  ASSERT_TRUE(waitUntil([&] {
    return !desktop.service.asked.empty() &&
           desktop.service.asked.back().body == QStringLiteral("this");
  }));
}

TEST(frmInfos, HandsItsNoticesToTheDesktopAndStaysAway) {
  Desktop desktop;
  frmInfos window(desktopNoticeFor(QStringLiteral("wayland")));
  window.setUp();
  window.showNotice(u"Lancement de NotePad");
  ASSERT_TRUE(desktop.hears(1));
  EXPECT_EQ(desktop.service.asked[0].body, QStringLiteral("Lancement de NotePad"));
  window.showNotice(u"");
  ASSERT_TRUE(desktop.hears(2));
  EXPECT_EQ(desktop.service.asked[1].body, QString());
  EXPECT_FALSE(window.isVisible());
  EXPECT_FALSE(window.findChild<QTimer*>(QStringLiteral("Timer1"))->isActive());
}

#include "ui_desktop_notice.moc"
