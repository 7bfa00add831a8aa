// SPDX-License-Identifier: GPL-3.0-or-later
#include <QPlainTextEdit>
#include <QPushButton>

#include "bridge/frmDebug.h"
#include "ui/UiMain.h"

namespace {

struct Monitor {
  TraceBuffer trace;
  std::vector<std::string> opened;
  frmDebug window{trace,
                  {.showCookieInformation = [this] { opened.push_back("infos"); },
                   .showTestWindow = [this] { opened.push_back("test"); }}};
  QPlainTextEdit& text = control<QPlainTextEdit>(window, "rtbDebug");

  void show() {
    window.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));
  }
};

}  // namespace

TEST(frmDebug, ShowsWhatWasLoggedBeforeItWasEverShown) {
  Monitor monitor;
  monitor.trace.log(u"un");
  monitor.trace.log(u"cookie trouvé :\r\nrunapp");
  monitor.show();
  EXPECT_EQ(monitor.text.toPlainText(), QStringLiteral("\nun\ncookie trouvé :\nrunapp"));
}

TEST(frmDebug, FollowsTheTraceWhileItIsOpen) {
  Monitor monitor;
  monitor.show();
  monitor.trace.log(u"CookieValue est nul");
  EXPECT_TRUE(monitor.text.toPlainText().endsWith(QStringLiteral("\nCookieValue est nul")));
}

TEST(frmDebug, ClosingAndOpeningAgainKeepsTheTrace) {
  Monitor monitor;
  monitor.trace.log(u"un");
  monitor.show();
  control<QPushButton>(monitor.window, "cmdClose").click();
  EXPECT_FALSE(monitor.window.isVisible());
  monitor.trace.log(u"deux");
  monitor.show();
  EXPECT_EQ(monitor.text.toPlainText(), QStringLiteral("\nun\ndeux"));
}

TEST(frmDebug, EscapeHidesIt) {
  Monitor monitor;
  monitor.show();
  QTest::keyClick(&monitor.window, Qt::Key_Escape);
  EXPECT_FALSE(monitor.window.isVisible());
}

TEST(frmDebug, OpensTheFileAboutTheCookiesAndTheTestWindow) {
  Monitor monitor;
  monitor.show();
  auto& infos = control<QPushButton>(monitor.window, "cmdInfos");
  auto& test = control<QPushButton>(monitor.window, "cmdTest");
  EXPECT_EQ(infos.text(), QStringLiteral("Infos cookies"));
  EXPECT_EQ(test.text(), QStringLiteral("Fenêtre de test"));
  QTest::mouseClick(&infos, Qt::LeftButton);
  QTest::keyClick(&test, Qt::Key_Space);
  EXPECT_EQ(monitor.opened, (std::vector<std::string>{"infos", "test"}));
  EXPECT_TRUE(monitor.window.isVisible());
}

TEST(frmDebug, StaysAboveOtherWindows) {
  Monitor monitor;
  EXPECT_TRUE(monitor.window.windowFlags().testFlag(Qt::WindowStaysOnTopHint));
}

TEST(frmDebug, TheTraceIsReadOnlyAndTheFocusIsOnTheButton) {
  Monitor monitor;
  monitor.show();
  EXPECT_TRUE(monitor.text.isReadOnly());
  monitor.window.activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&monitor.window));
  EXPECT_EQ(QApplication::focusWidget(), &control<QPushButton>(monitor.window, "cmdClose"));
}
