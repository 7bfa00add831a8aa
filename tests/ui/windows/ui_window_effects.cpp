// SPDX-License-Identifier: GPL-3.0-or-later
#include <QProcess>
#include <QWindow>

#include "ui/UiMain.h"
#include "windows/qt/AlwaysOnTheTop.h"
#include "windows/qt/Transparence.h"

namespace {

// What the window system itself says about a window.
QString property(const QWidget& window, const QString& name) {
  QProcess xprop;
  xprop.start(QStringLiteral("xprop"),
              {QStringLiteral("-id"), QString::number(window.winId()), name});
  xprop.waitForFinished();
  return QString::fromUtf8(xprop.readAllStandardOutput());
}

bool isAbove(const QWidget& window) {
  return property(window, QStringLiteral("_NET_WM_STATE"))
      .contains(QStringLiteral("_NET_WM_STATE_ABOVE"));
}

void showAndWait(QWidget& window) {
  window.setGeometry(200, 150, 320, 180);
  window.show();
  ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));
}

}  // namespace

TEST(RendreTransparent, SetsTheWindowsOpacity) {
  QWidget window;
  showAndWait(window);
  EXPECT_EQ(RendreTransparent(window, 51), 0);
  EXPECT_DOUBLE_EQ(window.windowOpacity(), 0.2);
  EXPECT_TRUE(waitUntil([&] {
    return property(window, QStringLiteral("_NET_WM_WINDOW_OPACITY"))
        .contains(QString::number(0x33333333));
  }));
  EXPECT_EQ(RendreTransparent(window, 0), 0);
  EXPECT_EQ(window.windowOpacity(), 0.0);
  EXPECT_EQ(RendreTransparent(window, 255), 0);
  EXPECT_EQ(window.windowOpacity(), 1.0);
}

TEST(RendreTransparent, RefusesWhatIsOutOfRangeAndChangesNothing) {
  QWidget window;
  ASSERT_EQ(RendreTransparent(window, 51), 0);
  for (const int outside : {256, 258, -1, 32767, -32768}) {
    const auto opacity = static_cast<std::int16_t>(outside);
    EXPECT_EQ(RendreTransparent(window, opacity), 1) << opacity;
    EXPECT_DOUBLE_EQ(window.windowOpacity(), 0.2);
  }
}

TEST(RendreTransparent, AnswersTwoForWhatIsNoWindow) {
  QWidget window;
  QWidget child(&window);
  EXPECT_EQ(RendreTransparent(child, 100), 2);
  EXPECT_EQ(RendreTransparent(child, 256), 1);
}

TEST(MettreAuPremierPlan, RaisesAShownWindowWithoutMovingOrHidingIt) {
  QWidget window;
  showAndWait(window);
  ASSERT_TRUE(waitUntil([&] { return window.frameGeometry() != window.geometry(); }));
  const QRect before = window.geometry();
  const WId id = window.winId();
  int hidden = 0;
  QObject::connect(window.windowHandle(), &QWindow::visibleChanged, &window,
                   [&](bool visible) { hidden += visible ? 0 : 1; });

  MettreAuPremierPlan(window, true);
  EXPECT_TRUE(waitUntil([&] { return isAbove(window); }));
  MettreAuPremierPlan(window, false);
  EXPECT_TRUE(waitUntil([&] { return !isAbove(window); }));

  EXPECT_EQ(window.geometry(), before);
  EXPECT_TRUE(window.isVisible());
  EXPECT_EQ(window.winId(), id);
  EXPECT_EQ(hidden, 0);
}

TEST(MettreAuPremierPlan, LeavesAHiddenWindowHidden) {
  QWidget window;
  window.setGeometry(200, 150, 320, 180);
  MettreAuPremierPlan(window, true);
  EXPECT_FALSE(window.isVisible());
  EXPECT_EQ(window.geometry(), QRect(200, 150, 320, 180));
  window.show();
  ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));
  EXPECT_TRUE(waitUntil([&] { return isAbove(window); }));
}
