// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QLabel>

// A label for a path. One that is too long for it loses its middle on the screen; the whole one is
// in its tool tip.
class PathLabel : public QLabel {
  Q_OBJECT

 public:
  using QLabel::QLabel;

  QSize minimumSizeHint() const override;

 protected:
  bool event(QEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
};
