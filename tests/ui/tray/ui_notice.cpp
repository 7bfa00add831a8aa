// SPDX-License-Identifier: GPL-3.0-or-later
#include <QCursor>
#include <QElapsedTimer>
#include <QLabel>
#include <QProcess>
#include <QScreen>
#include <QWindow>
#include <vector>

#include "tray/DesktopNotice.h"
#include "tray/frmInfos.h"
#include "ui/UiMain.h"

namespace {

struct Notice {
  frmInfos window{nullptr};
  QTimer& timer = *window.findChild<QTimer*>(QStringLiteral("Timer1"));
  QLabel& label = control<QLabel>(window, "lblInfos");
  int screenHeight = window.screen()->geometry().height();

  bool isUp() const { return window.geometry().bottom() < screenHeight; }
  bool comesUp() {
    return waitUntil([this] { return timer.interval() == 1000; });
  }
  bool goesAway() {
    return waitUntil([this] { return !window.isVisible(); }, 10000);
  }
};

}  // namespace

TEST(frmInfos, WaitsBelowTheScreenAfterSetUp) {
  Notice notice;
  EXPECT_FALSE(notice.window.isVisible());
  notice.window.setUp();
  ASSERT_TRUE(notice.window.isVisible());
  EXPECT_FALSE(notice.timer.isActive());
  EXPECT_GT(notice.window.y(), notice.screenHeight);
  // 50 twips from the right edge, 100 below the lower one.
  EXPECT_EQ(notice.window.x(), 1280 - notice.window.width() - 3);
  EXPECT_EQ(notice.window.y(), notice.screenHeight + 7);
}

TEST(frmInfos, SlidesUpStaysFiveSecondsAndSlidesDown) {
  Notice notice;
  notice.window.setUp();
  EXPECT_EQ(notice.timer.interval(), 200);

  std::vector<int> tops;
  QObject::connect(&notice.timer, &QTimer::timeout, &notice.window,
                   [&] { tops.push_back(notice.window.y()); });
  notice.window.showNotice(u"Raccourci Créé");
  EXPECT_TRUE(notice.timer.isActive());
  EXPECT_EQ(notice.label.text(), QStringLiteral("Raccourci Créé"));
  ASSERT_TRUE(notice.comesUp());
  EXPECT_TRUE(notice.isUp());
  EXPECT_EQ(notice.window.frameGeometry(), notice.window.geometry());
  for (std::size_t i = 1; i < tops.size(); ++i) EXPECT_EQ(tops[i - 1] - tops[i], 1) << i;

  QElapsedTimer stays;
  stays.start();
  ASSERT_TRUE(waitUntil([&] { return notice.timer.interval() == 11; }, 8000));
  EXPECT_GE(stays.elapsed(), 4700);

  ASSERT_TRUE(notice.goesAway());
  EXPECT_GE(notice.window.y(), notice.screenHeight);
  EXPECT_FALSE(notice.timer.isActive());
  EXPECT_EQ(notice.timer.interval(), 200);
}

TEST(frmInfos, AClickWhileSlidingUpReversesIt) {
  Notice notice;
  notice.window.setUp();
  notice.window.showNotice(u"Lancement de NotePad");
  ASSERT_TRUE(waitUntil([&] { return notice.window.y() < notice.screenHeight - 10; }));
  QTest::mouseClick(&notice.label, Qt::LeftButton);
  EXPECT_EQ(notice.timer.interval(), 11);
  EXPECT_TRUE(notice.goesAway());
  EXPECT_FALSE(notice.timer.isActive());

  // And it is ready for the next one.
  notice.window.showNotice(u"Raccourci Créé");
  EXPECT_TRUE(notice.comesUp());
}

TEST(frmInfos, AClickWhileWaitingCutsItShort) {
  Notice notice;
  notice.window.setUp();
  notice.window.showNotice(u"Lancement de NotePad");
  ASSERT_TRUE(notice.comesUp());
  QElapsedTimer leaves;
  leaves.start();
  QTest::mouseClick(&notice.window, Qt::LeftButton);
  EXPECT_TRUE(notice.goesAway());
  EXPECT_LT(leaves.elapsed(), 4000);
}

TEST(frmInfos, ARealClickReachesIt) {
  Notice notice;
  notice.window.setUp();
  notice.window.showNotice(u"Lancement de NotePad");
  ASSERT_TRUE(notice.comesUp());
  const QPoint place = notice.window.geometry().center();
  QProcess::execute(QStringLiteral("xdotool"),
                    {QStringLiteral("mousemove"), QString::number(place.x()),
                     QString::number(place.y()), QStringLiteral("click"), QStringLiteral("1")});
  EXPECT_TRUE(waitUntil([&] { return notice.timer.interval() == 11; }, 2000));
}

TEST(frmInfos, ASecondNoticeOnlyChangesTheText) {
  Notice notice;
  notice.window.setUp();
  notice.window.showNotice(u"Lancement de NotePad");
  ASSERT_TRUE(waitUntil([&] { return notice.window.y() < notice.screenHeight - 10; }));
  const int top = notice.window.y();
  notice.window.showNotice(u"");
  EXPECT_EQ(notice.label.text(), QString());
  EXPECT_EQ(notice.window.y(), top);
  EXPECT_EQ(notice.timer.interval(), 10);
  EXPECT_TRUE(notice.comesUp());
}

TEST(frmInfos, AnEmptyTextShowsAnEmptyNotice) {
  Notice notice;
  notice.window.setUp();
  notice.window.showNotice(u"");
  EXPECT_TRUE(notice.comesUp());
  EXPECT_TRUE(notice.window.isVisible());
}

TEST(frmInfos, ShowsItsTextAsItStands) {
  Notice notice;
  notice.window.showNotice(u"<b>a</b> & b");
  EXPECT_EQ(notice.label.text(), QStringLiteral("<b>a</b> & b"));
  EXPECT_EQ(notice.label.textFormat(), Qt::PlainText);
}

TEST(frmInfos, NeverTakesTheFocus) {
  QWidget other;
  other.show();
  other.activateWindow();
  ASSERT_TRUE(waitUntil([&] { return other.isActiveWindow(); }));
  Notice notice;
  notice.window.setUp();
  notice.window.showNotice(u"Lancement de NotePad");
  ASSERT_TRUE(notice.comesUp());
  EXPECT_TRUE(other.isActiveWindow());
  const QPoint place = notice.window.geometry().center();
  QProcess::execute(QStringLiteral("xdotool"),
                    {QStringLiteral("mousemove"), QString::number(place.x()),
                     QString::number(place.y()), QStringLiteral("click"), QStringLiteral("1")});
  ASSERT_TRUE(notice.goesAway());
  EXPECT_TRUE(other.isActiveWindow());
}

TEST(frmInfos, IsAboveOtherWindows) {
  QWidget other;
  other.setGeometry(other.screen()->geometry());
  other.showFullScreen();
  ASSERT_TRUE(QTest::qWaitForWindowExposed(&other));
  Notice notice;
  EXPECT_TRUE(notice.window.windowFlags().testFlag(Qt::WindowStaysOnTopHint));
  notice.window.setUp();
  notice.window.showNotice(u"Lancement de NotePad");
  ASSERT_TRUE(notice.comesUp());
  // The screen itself shows the notice there, not the window below it.
  const QRect there = notice.window.geometry();
  EXPECT_TRUE(waitUntil([&] {
    const QImage seen = notice.window.screen()
                            ->grabWindow(0, there.x(), there.y(), there.width(), there.height())
                            .toImage()
                            .convertToFormat(QImage::Format_RGB32);
    return seen == notice.window.grab().toImage().convertToFormat(QImage::Format_RGB32);
  }));
}

TEST(DesktopNotice, IsForPlatformsWhereWindowsCannotPlaceThemselves) {
  EXPECT_FALSE(windowsPlaceThemselves(QStringLiteral("wayland")));
  EXPECT_TRUE(windowsPlaceThemselves(QStringLiteral("xcb")));
  EXPECT_TRUE(desktopNoticeFor(QStringLiteral("wayland")));
  EXPECT_TRUE(desktopNoticeFor(QStringLiteral("wayland-egl")));
  EXPECT_FALSE(desktopNoticeFor(QStringLiteral("xcb")));
  EXPECT_FALSE(desktopNoticeFor(QStringLiteral("windows")));
}
