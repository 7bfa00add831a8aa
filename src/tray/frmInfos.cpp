// SPDX-License-Identifier: GPL-3.0-or-later
#include "tray/frmInfos.h"

#include <QAccessible>
#include <QGuiApplication>
#include <QPainter>
#include <QScreen>
#include <utility>

#include "platform/qt/QtText.h"
#include "platform/qt/ScreenReaderRoles.h"
#include "tray/DesktopNotice.h"
#include "ui_frmInfos.h"
#include "windows/qt/AlwaysOnTheTop.h"
#include "windows/qt/Assets.h"

namespace {

constexpr int kWidth = 300;
constexpr int kHeight = 72;
constexpr int kIconSize = 32;

// A window manager would move a window that starts below the screen back onto it.
constexpr Qt::WindowFlags kFlags = Qt::Tool | Qt::FramelessWindowHint |
                                   Qt::WindowDoesNotAcceptFocus | Qt::X11BypassWindowManagerHint;

TwipsSize screenSize() {
  const QSize pixels = QGuiApplication::primaryScreen()->geometry().size();
  return {twipsFromPixels(pixels.width()), twipsFromPixels(pixels.height())};
}

}  // namespace

frmInfos::frmInfos(std::unique_ptr<DesktopNotice> desktop)
    : QWidget(nullptr, kFlags),
      ui_(std::make_unique<Ui::frmInfos>()),
      desktop_(std::move(desktop)),
      motion_({twipsFromPixels(kWidth), twipsFromPixels(kHeight)}),
      Timer1_(this) {
  setScreenReaderRole(*this, QAccessible::Notification);
  ui_->setupUi(this);
  ui_->lblInfos->setForegroundRole(QPalette::Text);  // it lies on the colour of boxes
  setFixedSize(kWidth, kHeight);
  setAttribute(Qt::WA_ShowWithoutActivating);
  ui_->lblIcon->setPixmap(programIcon().pixmap(QSize(kIconSize, kIconSize), devicePixelRatioF()));
  Timer1_.setObjectName(QStringLiteral("Timer1"));
  Timer1_.setTimerType(Qt::PreciseTimer);
  Timer1_.setInterval(motion_.interval());
  connect(&Timer1_, &QTimer::timeout, this, &frmInfos::Timer1_Timer);
  Form_Load();
}

frmInfos::~frmInfos() = default;

void frmInfos::Form_Load() {
  motion_.load(screenSize());
  MettreAuPremierPlan(*this, true);
  follow();
}

void frmInfos::Form_Click() {
  motion_.click();
  follow();
}

void frmInfos::setUp() {
  if (desktop_) return;
  motion_.setUp(screenSize());
  follow();
}

void frmInfos::showNotice(TextView text) {
  if (desktop_) {
    desktop_->show(toQt(text));
    return;
  }
  ui_->lblInfos->setText(toQt(text));
  motion_.show();
  follow();
  raise();
  // It waits below the screen, which counts as shown: nothing else tells that it comes.
  QAccessibleEvent comes(this, QAccessible::ObjectShow);
  QAccessible::updateAccessibility(&comes);
}

void frmInfos::mousePressEvent(QMouseEvent*) { Form_Click(); }

void frmInfos::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.fillRect(rect(), palette().base());
  painter.setPen(palette().mid().color());
  painter.drawRect(rect().adjusted(0, 0, -1, -1));
  painter.fillRect(QRect(0, 0, 4, height()), QColor(0x12, 0x83, 0x7b));
}

void frmInfos::Timer1_Timer() {
  motion_.tick(screenSize());
  follow();
}

// Does with the window and its timer what the motion says.
void frmInfos::follow() {
  const QPoint origin = QGuiApplication::primaryScreen()->geometry().topLeft();
  move(origin + QPoint(pixelsFromTwips(motion_.left()), pixelsFromTwips(motion_.top())));
  setVisible(motion_.visible());
  if (Timer1_.interval() != motion_.interval()) Timer1_.setInterval(motion_.interval());
  if (Timer1_.isActive() == motion_.enabled()) return;
  if (motion_.enabled()) {
    Timer1_.start();
  } else {
    Timer1_.stop();
  }
}
