// SPDX-License-Identifier: GPL-3.0-or-later
#include "sync/qt/PathLabel.h"

#include <QHelpEvent>
#include <QPainter>
#include <QStyle>
#include <QToolTip>

QSize PathLabel::minimumSizeHint() const { return {0, QLabel::minimumSizeHint().height()}; }

bool PathLabel::event(QEvent* event) {
  if (event->type() != QEvent::ToolTip) return QLabel::event(event);
  const bool whole = fontMetrics().horizontalAdvance(text()) <= contentsRect().width();
  QToolTip::showText(static_cast<QHelpEvent*>(event)->globalPos(), whole ? QString() : text(),
                     this);
  return true;
}

void PathLabel::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  const QString shown = fontMetrics().elidedText(text(), Qt::ElideMiddle, contentsRect().width());
  style()->drawItemText(&painter, contentsRect(), static_cast<int>(alignment()), palette(),
                        isEnabled(), shown, foregroundRole());
}
