// SPDX-License-Identifier: GPL-3.0-or-later
#include "sync/qt/DefilerGrille.h"

#include <QScrollBar>

void DefilerGrille(std::int32_t step, std::uint8_t count, QAbstractItemView& grid) {
  QScrollBar& firstRow = *grid.verticalScrollBar();
  for (int i = 0; i < count; ++i) firstRow.setValue(firstRow.value() + step);
}

int WheelNotches::add(const QWheelEvent& event) {
  angle_ -= event.angleDelta().y();
  const int notches = angle_ / QWheelEvent::DefaultDeltasPerStep;
  angle_ -= notches * QWheelEvent::DefaultDeltasPerStep;
  return notches;
}
