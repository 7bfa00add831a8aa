// SPDX-License-Identifier: GPL-3.0-or-later
#include <QElapsedTimer>
#include <QProcess>
#include <QSignalSpy>
#include <QSystemTrayIcon>
#include <memory>
#include <vector>

#include "tray/MenuTree.h"
#include "tray/MenuWindow.h"
#include "tray/TrayHost.h"
#include "tray/TrayIcon.h"
#include "tray/TrayManager.h"
#include "tray/TrayMenu.h"
#include "tray/TrayMessages.h"
#include "ui/Trayer.h"
#include "ui/UiMain.h"

namespace {

// The tray icon with its menu in a running trayer.
struct Tray {
  Tray() {
    up = waitUntil(trayManagerStands);
    icon = std::make_unique<TrayIcon>(menu, tipText({1, 4, 67}));
    system = icon->findChild<QSystemTrayIcon*>(QStringLiteral("trayIcon"));
    timer = icon->findChild<QTimer*>(QStringLiteral("TimerIcon"));
  }
  bool place() {
    return waitUntil([this] {
      return system->geometry().width() > 8 && system->geometry().topLeft() != QPoint();
    });
  }
  QImage shown() const { return system->icon().pixmap(16, 16).toImage(); }

  Trayer trayer;
  bool up = false;
  TrayMenu menu{std::set<TextView>{u"MenuQuit"}, [](TextView) {}};
  std::unique_ptr<TrayIcon> icon;
  QSystemTrayIcon* system = nullptr;
  QTimer* timer = nullptr;
};

void clickAt(const QPoint& place, int button) {
  QProcess::execute(QStringLiteral("xdotool"),
                    {QStringLiteral("mousemove"), QString::number(place.x()),
                     QString::number(place.y()), QStringLiteral("click"), QString::number(button)});
}

}  // namespace

// The cases of TrayHost come first: they need a process in which no icon has been made yet.

TEST(TrayHost, SaysOnceThatThereIsNoTray) {
  ASSERT_FALSE(trayManagerStands());
  int none = 0;
  int found = 0;
  TrayMenu menu({}, [](TextView) {});
  std::unique_ptr<MenuWindow> window;
  TrayHost host(
      trayManagerStands, [&] { ++found; },
      [&] {
        ++none;
        window = std::make_unique<MenuWindow>(menu);
        window->show();
      });
  host.start();
  EXPECT_EQ(none, 0);
  ASSERT_TRUE(waitUntil([&] { return none > 0; }, 10000));
  EXPECT_TRUE(waitUntil([&] { return window->windowHandle()->isExposed(); }));
  EXPECT_EQ(none, 1);
  EXPECT_EQ(found, 0);
}

TEST(TrayHost, FindsATrayThatStartsLater) {
  ASSERT_FALSE(trayManagerStands());
  int none = 0;
  int found = 0;
  TrayHost host(
      trayManagerStands, [&] { ++found; }, [&] { ++none; });
  host.start();
  EXPECT_EQ(found, 0);
  const Trayer trayer;
  ASSERT_TRUE(waitUntil([&] { return found > 0; }, 10000));
  EXPECT_EQ(found, 1);
  EXPECT_EQ(none, 0);
}

TEST(TrayHost, FindsATrayAfterHavingSaidThatThereIsNone) {
  bool stands = false;
  int none = 0;
  int found = 0;
  TrayHost host([&] { return stands; }, [&] { ++found; }, [&] { ++none; });
  host.start();
  ASSERT_TRUE(waitUntil([&] { return none > 0; }, 10000));
  stands = true;
  EXPECT_TRUE(waitUntil([&] { return found > 0; }, 10000));
  EXPECT_EQ(none, 1);
}

TEST(TrayHost, FindsAtOnceTheTrayThatIsThere) {
  const Trayer trayer;
  ASSERT_TRUE(waitUntil(trayManagerStands));
  int found = 0;
  TrayHost host(
      trayManagerStands, [&] { ++found; }, [] {});
  host.start();
  EXPECT_EQ(found, 1);
  host.look();
  EXPECT_EQ(found, 1);
}

TEST(TrayIcon, IsAddedAtTheFirstCallWithItsPictureAndTip) {
  Tray tray;
  ASSERT_TRUE(tray.up);
  EXPECT_FALSE(tray.system->isVisible());
  tray.icon->ApplicIcone(0);
  EXPECT_TRUE(tray.system->isVisible());
  EXPECT_EQ(tray.system->toolTip(), QStringLiteral("Tavrollo V1.4.67"));
  EXPECT_TRUE(tray.place());
}

TEST(TrayIcon, HasNinePicturesAndKeepsTheLastOneBeyondThem) {
  Tray tray;
  ASSERT_TRUE(tray.up);
  std::vector<QImage> seen;
  for (std::int16_t frame = 0; frame <= 8; ++frame) {
    tray.icon->ApplicIcone(frame);
    const QImage image = tray.shown();
    ASSERT_FALSE(image.isNull());
    for (const QImage& other : seen) EXPECT_NE(image, other) << frame;
    seen.push_back(image);
    const QString file = QStringLiteral(":/tavrollo/tray/frame%1.svg").arg(frame + 1);
    EXPECT_EQ(image, QIcon(file).pixmap(16, 16).toImage());
  }
  tray.icon->ApplicIcone(9);
  tray.icon->ApplicIcone(-1);
  EXPECT_EQ(tray.shown(), seen.back());
}

TEST(TrayIcon, RebuildsItsTipAtFrame0Only) {
  Tray tray;
  ASSERT_TRUE(tray.up);
  tray.icon->ApplicIcone(3);
  EXPECT_EQ(tray.system->toolTip(), QStringLiteral("Tavrollo V1.4.67"));
  tray.system->setToolTip(QStringLiteral("other"));
  tray.icon->ApplicIcone(4);
  EXPECT_EQ(tray.system->toolTip(), QStringLiteral("other"));
  tray.icon->ApplicIcone(0);
  EXPECT_EQ(tray.system->toolTip(), QStringLiteral("Tavrollo V1.4.67"));
}

TEST(TrayIcon, ClicksPopTheMenuUpAtTheCursor) {
  for (const int button : {1, 3}) {
    Tray tray;
    ASSERT_TRUE(tray.up);
    tray.icon->ApplicIcone(0);
    ASSERT_TRUE(tray.place());
    QMenu& menu = tray.menu.menu();
    QSignalSpy opened(&menu, &QMenu::aboutToShow);
    // The tray may still be moving its icons about: a click beside ours is made again.
    QPoint place;
    QElapsedTimer sinceClick;
    const auto clickUntilOpen = [&] {
      if (menu.isVisible()) return true;
      if (sinceClick.isValid() && sinceClick.elapsed() < 1000) return false;
      place = tray.system->geometry().center();
      clickAt(place, button);
      sinceClick.start();
      return menu.isVisible();
    };
    ASSERT_TRUE(waitUntil(clickUntilOpen, 10000)) << button;
    EXPECT_EQ(opened.count(), 1);
    EXPECT_TRUE(menu.geometry().adjusted(-4, -4, 4, 4).contains(place));
    menu.close();
  }
}

TEST(TrayIcon, OtherMessagesLeaveTheMenuClosed) {
  Tray tray;
  ASSERT_TRUE(tray.up);
  QMenu& menu = tray.menu.menu();
  for (const int message : {0, 512, 515, 517, 518, 519}) {
    tray.icon->mouseMoved(message * 15);
    EXPECT_FALSE(menu.isVisible()) << message;
  }
  for (const int message : {513, 514, 516}) {
    tray.icon->mouseMoved(message * 15);
    EXPECT_TRUE(menu.isVisible()) << message;
    menu.close();
  }
}

TEST(TrayIcon, ADoubleClickAndTheMiddleButtonDoNothing) {
  Tray tray;
  ASSERT_TRUE(tray.up);
  Q_EMIT tray.system->activated(QSystemTrayIcon::DoubleClick);
  Q_EMIT tray.system->activated(QSystemTrayIcon::MiddleClick);
  EXPECT_FALSE(tray.menu.menu().isVisible());
}

TEST(TrayIcon, AnimationRunsThroughItsFramesAndFrame0EndsIt) {
  Tray tray;
  ASSERT_TRUE(tray.up);
  tray.icon->ApplicIcone(0);
  EXPECT_EQ(tray.timer->interval(), 500);
  std::vector<QImage> pictures;
  for (int i = 1; i <= 9; ++i) {
    const QString file = QStringLiteral(":/tavrollo/tray/frame%1.svg").arg(i);
    pictures.push_back(QIcon(file).pixmap(16, 16).toImage());
  }
  std::vector<QImage> seen;
  QObject::connect(tray.timer, &QTimer::timeout, tray.timer, [&] { seen.push_back(tray.shown()); });
  tray.icon->animate(5);
  ASSERT_TRUE(waitUntil([&] { return seen.size() >= 5; }));
  for (std::size_t i = 0; i < 5; ++i) EXPECT_EQ(seen[i], pictures[5 + i % 4]);

  tray.icon->animate(0);
  ASSERT_TRUE(waitUntil([&] { return !tray.timer->isActive(); }));
  EXPECT_EQ(tray.shown(), pictures[0]);
}

TEST(TrayIcon, AHandledCommandKeepsItMovingForTwoSeconds) {
  Tray tray;
  ASSERT_TRUE(tray.up);
  tray.icon->ApplicIcone(0);
  const QImage still = tray.shown();
  int moving = 0;
  QObject::connect(tray.timer, &QTimer::timeout, tray.timer,
                   [&] { moving += tray.shown() == still ? 0 : 1; });
  tray.icon->showCommandHandled();
  EXPECT_TRUE(tray.timer->isActive());
  ASSERT_TRUE(waitUntil([&] { return !tray.timer->isActive(); }));
  EXPECT_GE(moving, 3);
  EXPECT_LE(moving, 4);
  EXPECT_EQ(tray.shown(), still);
}

TEST(TrayIcon, ComesBackWhenTheTrayIsRestarted) {
  Tray tray;
  ASSERT_TRUE(tray.up);
  tray.icon->ApplicIcone(0);
  ASSERT_TRUE(tray.place());
  tray.trayer.stop();
  ASSERT_TRUE(waitUntil([] { return !trayManagerStands(); }));
  tray.trayer.start();
  ASSERT_TRUE(waitUntil(trayManagerStands));
  ASSERT_TRUE(tray.place());
  // The icon may still tell the place that it had in the old tray: whoever misses it clicks again.
  const auto opens = [&] {
    clickAt(tray.system->geometry().center(), 1);
    return waitUntil([&] { return tray.menu.menu().isVisible(); }, 500);
  };
  EXPECT_TRUE(waitUntil(opens, 20'000));
  tray.menu.menu().close();
}

TEST(TrayIcon, RemovalTakesItOutOfTheTray) {
  Tray tray;
  ASSERT_TRUE(tray.up);
  tray.icon->ApplicIcone(0);
  tray.icon->animate(1);
  ASSERT_TRUE(tray.place());
  tray.icon->remove();
  EXPECT_FALSE(tray.system->isVisible());
  EXPECT_FALSE(tray.timer->isActive());
}
