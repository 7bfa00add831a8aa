// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QScreen>
#include <QWidget>

// Puts a window that was not shown yet into the middle of its screen, small enough to have its
// frame there too.
inline void centre(QWidget& window) {
  constexpr QSize kFrame(16, 36);  // the window manager tells the true one too late
  const QRect area = window.screen()->availableGeometry();
  window.resize(window.size().boundedTo(area.size() - kFrame));
  // One that cannot be made small enough begins where the screen does.
  const QSize left = (area.size() - window.size() - kFrame).expandedTo({0, 0});
  window.move(area.topLeft() + QPoint(left.width(), left.height()) / 2);
}
