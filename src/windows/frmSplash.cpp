// SPDX-License-Identifier: GPL-3.0-or-later
#include "windows/frmSplash.h"

#include <QLabel>
#include <QMouseEvent>
#include <QPainter>
#include <QScreen>
#include <algorithm>

#include "platform/qt/QtText.h"
#include "ui_frmSplash.h"
#include "windows/Twips.h"
#include "windows/qt/Assets.h"
#include "windows/qt/Drawing.h"

namespace {

constexpr int kFontPixels = 15;

}  // namespace

frmSplash::frmSplash(const SplashContents& contents)
    : QWidget(nullptr, Qt::SplashScreen | Qt::FramelessWindowHint | Qt::WindowDoesNotAcceptFocus),
      ui_(std::make_unique<Ui::frmSplash>()),
      picture_(std::make_unique<Drawing>(QStringLiteral("splash"))) {
  ui_->setupUi(this);
  setAttribute(Qt::WA_DeleteOnClose);
  setAttribute(Qt::WA_ShowWithoutActivating);
  setAttribute(Qt::WA_OpaquePaintEvent);
  setWindowIcon(programIcon());
  Form_Load(contents);
}

frmSplash::~frmSplash() = default;

void frmSplash::Form_Load(const SplashContents& contents) {
  if (!isMinimized()) {
    const QSize natural = picture_->size();
    const SplashSize twips =
        splashSize(hundredthsFromPixels(natural.width()), hundredthsFromPixels(natural.height()),
                   contents.scaleX, contents.scaleY);
    const QRect area = screen()->geometry();
    resize(boundedPixelsFromTwips(twips.width, area.width()),
           boundedPixelsFromTwips(twips.height, area.height()));
    move(area.center() - rect().center());
  }
  placeLabels();
  ui_->lblVersion->setText(toQt(versionText(contents.version)));
  ui_->lblYear->setText(toQt(revisionDateText(contents.programModified, contents.locale)));
}

void frmSplash::Form_Click() { close(); }

void frmSplash::mouseReleaseEvent(QMouseEvent* event) {
  if (rect().contains(event->position().toPoint())) Form_Click();
}

void frmSplash::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  picture_->paint(painter, rect());
}

void frmSplash::resizeEvent(QResizeEvent*) { placeLabels(); }

void frmSplash::placeLabels() {
  const QSizeF natural = picture_->size();
  const double across = width() / natural.width();
  const double down = height() / natural.height();
  for (QLabel* label : {ui_->lblVersion, ui_->lblYear}) {
    const QRectF place = label->property("placeOnPicture").toRect();
    label->setGeometry(
        QRectF(place.x() * across, place.y() * down, place.width() * across, place.height() * down)
            .toRect());
    QFont font = label->font();
    font.setPixelSize(std::max(1, static_cast<int>(kFontPixels * std::min(across, down))));
    label->setFont(font);
  }
}
