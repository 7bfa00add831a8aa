// SPDX-License-Identifier: GPL-3.0-or-later
#include <QElapsedTimer>
#include <QLabel>
#include <QScreen>
#include <QSignalSpy>
#include <algorithm>
#include <ctime>
#include <vector>

#include "ui/UiMain.h"
#include "windows/frmSplash.h"
#include "windows/qt/SplashShow.h"

namespace {

SplashContents contents() {
  std::tm calendar{};
  calendar.tm_year = 117;
  calendar.tm_mon = 2;
  calendar.tm_mday = 15;
  calendar.tm_hour = 12;
  calendar.tm_isdst = -1;
  SplashContents made;
  made.version = {1, 4, 67};
  made.programModified = std::mktime(&calendar);
  return made;
}

frmSplash* splashOnScreen() {
  for (QWidget* window : QApplication::topLevelWidgets()) {
    auto* splash = qobject_cast<frmSplash*>(window);
    if (splash && splash->isVisible()) return splash;
  }
  return nullptr;
}

int alphaOf(const QWidget& window) { return qRound(window.windowOpacity() * 255); }

// A splash show whose clock the test sets.
struct Show {
  double now = 40000.0;
  SplashShow show{[] { return contents(); }, [this] { return now; }};
  QTimer& timer = *show.findChild<QTimer*>(QStringLiteral("TimerSplash"));

  // Starts it, and lets it come on the screen.
  frmSplash* onScreen() {
    show.start();
    return waitUntil([] { return splashOnScreen() != nullptr; }) ? splashOnScreen() : nullptr;
  }
};

}  // namespace

TEST(Splash, ShowsVersionAndDateOnItsPicture) {
  auto* splash = new frmSplash(contents());
  EXPECT_EQ(control<QLabel>(*splash, "lblVersion").text(), QStringLiteral("V1.4.67"));
  EXPECT_EQ(control<QLabel>(*splash, "lblYear").text(), QStringLiteral("rév 15/03/2017"));
  const QImage picture = splash->grab().toImage();
  EXPECT_NE(picture.pixel(2, 2), picture.pixel(picture.width() - 3, picture.height() - 3));
  delete splash;
}

TEST(Splash, IsSizedToItsPictureAndCentred) {
  auto* splash = new frmSplash(contents());
  EXPECT_EQ(splash->size(), QSize(480, 300));
  splash->show();
  ASSERT_TRUE(waitUntil([&] { return splash->windowHandle()->isExposed(); }));
  const QPoint off = splash->geometry().center() - splash->screen()->geometry().center();
  EXPECT_LE(off.manhattanLength(), 2);
  delete splash;
}

TEST(Splash, FollowsTheScalesOfTheSettings) {
  SplashContents half = contents();
  half.scaleX = 283.5;
  auto* splash = new frmSplash(half);
  EXPECT_EQ(splash->size(), QSize(240, 300));
  const QLabel& year = control<QLabel>(*splash, "lblYear");
  EXPECT_TRUE(splash->rect().contains(year.geometry()));
  delete splash;
}

TEST(Splash, NeverGrowsBeyondTheScreen) {
  SplashContents huge = contents();
  huge.scaleX = huge.scaleY = 1e12;
  auto* splash = new frmSplash(huge);
  EXPECT_EQ(splash->size(), splash->screen()->geometry().size());
  delete splash;
}

TEST(Splash, KeepsItsSizeWhileItIsMinimised) {
  auto* splash = new frmSplash(contents());
  splash->setWindowState(Qt::WindowMinimized);
  SplashContents half = contents();
  half.scaleX = half.scaleY = 283.5;
  splash->Form_Load(half);
  EXPECT_EQ(splash->size(), QSize(480, 300));
  delete splash;
}

TEST(Splash, HasNoFrameAndTakesNoFocus) {
  QWidget other;
  other.show();
  other.activateWindow();
  ASSERT_TRUE(waitUntil([&] { return other.isActiveWindow(); }));
  Show show;
  frmSplash* splash = show.onScreen();
  ASSERT_TRUE(splash);
  ASSERT_TRUE(waitUntil([&] { return splash->windowHandle()->isExposed(); }));
  EXPECT_EQ(splash->frameGeometry(), splash->geometry());
  // By the time it is half faded in, a window that takes the focus would have it.
  ASSERT_TRUE(waitUntil([&] { return alphaOf(*splash) > 60; }));
  EXPECT_TRUE(other.isActiveWindow());
}

TEST(SplashShow, FadesInFrom8To253AndStaysThere) {
  Show show;
  frmSplash* splash = show.onScreen();
  ASSERT_TRUE(splash);
  EXPECT_EQ(show.timer.interval(), 50);

  std::vector<int> seen{alphaOf(*splash)};
  QObject::connect(&show.timer, &QTimer::timeout, splash,
                   [&] { seen.push_back(alphaOf(*splash)); });
  QElapsedTimer elapsed;
  elapsed.start();
  ASSERT_TRUE(waitUntil([&] { return std::count(seen.begin(), seen.end(), 253) >= 4; }));
  EXPECT_GT(elapsed.elapsed(), 2000);

  EXPECT_EQ(seen.front(), 8);
  for (std::size_t i = 1; i < seen.size(); ++i) {
    EXPECT_EQ(seen[i], std::min(seen[i - 1] + 5, 253));
  }
}

// How opaque a splash is at the moment in which it comes on the screen.
class OpacityWhenShown : public QObject {
 public:
  std::vector<int> seen;

 protected:
  bool eventFilter(QObject* object, QEvent* event) override {
    auto* splash = qobject_cast<frmSplash*>(object);
    if (splash && event->type() == QEvent::Show) seen.push_back(alphaOf(*splash));
    return false;
  }
};

TEST(SplashShow, NeverFlashesFullyOpaque) {
  OpacityWhenShown opacity;
  QApplication::instance()->installEventFilter(&opacity);
  Show show;
  ASSERT_TRUE(show.onScreen());
  EXPECT_EQ(opacity.seen, std::vector<int>{8});
}

TEST(SplashShow, EndsAfterFiveSecondsAndStopsItsTimer) {
  Show show;
  const QPointer<frmSplash> splash = show.onScreen();
  ASSERT_TRUE(splash);
  show.now += 5.0;
  QSignalSpy ticks(&show.timer, &QTimer::timeout);
  ASSERT_TRUE(waitUntil([&] { return ticks.count() >= 2; }));
  EXPECT_TRUE(splash);
  show.now += 0.01;
  EXPECT_TRUE(waitUntil([&] { return splash.isNull(); }));
  EXPECT_FALSE(show.timer.isActive());
}

TEST(SplashShow, AClickUnloadsItAndItDoesNotComeBack) {
  Show show;
  const QPointer<frmSplash> splash = show.onScreen();
  ASSERT_TRUE(splash);
  QTest::mouseClick(splash, Qt::LeftButton, {}, control<QLabel>(*splash, "lblVersion").pos());
  ASSERT_TRUE(waitUntil([&] { return splash.isNull(); }));

  EXPECT_TRUE(show.timer.isActive());
  QSignalSpy ticks(&show.timer, &QTimer::timeout);
  ASSERT_TRUE(waitUntil([&] { return ticks.count() >= 5; }));
  EXPECT_EQ(splashOnScreen(), nullptr);

  show.now += 6;
  ASSERT_TRUE(waitUntil([&] { return !show.timer.isActive(); }));
  EXPECT_EQ(splashOnScreen(), nullptr);
}

TEST(SplashShow, StaysAfterMidnightUntilAClick) {
  Show show;
  show.now = 86399.0;
  const QPointer<frmSplash> splash = show.onScreen();
  ASSERT_TRUE(splash);
  show.now = 30.0;
  QSignalSpy ticks(&show.timer, &QTimer::timeout);
  ASSERT_TRUE(waitUntil([&] { return ticks.count() >= 3; }));
  ASSERT_TRUE(splash);
  QTest::mouseClick(splash, Qt::LeftButton);
  EXPECT_TRUE(waitUntil([&] { return splash.isNull(); }));
}

TEST(SplashShow, ComesBackWhenItIsAskedForAgain) {
  Show show;
  QPointer<frmSplash> splash = show.onScreen();
  ASSERT_TRUE(splash);
  QTest::mouseClick(splash, Qt::LeftButton);
  ASSERT_TRUE(waitUntil([&] { return splash.isNull(); }));
  splash = show.onScreen();
  ASSERT_TRUE(splash);
  // Asked for while it is up, the same window fades in anew.
  ASSERT_TRUE(waitUntil([&] { return alphaOf(*splash) > 30; }));
  show.show.start();
  EXPECT_TRUE(waitUntil([&] { return alphaOf(*splash) == 8; }));
  EXPECT_EQ(splashOnScreen(), splash);
}
