// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QScreen>
#include <QWidget>

// Puts a window that was not shown yet into the middle of its screen, no larger than that.
inline void centre(QWidget& window) {
  const QRect area = window.screen()->availableGeometry();
  window.resize(window.size().boundedTo(area.size()));
  window.move(area.center() - window.rect().center());
}
