// SPDX-License-Identifier: GPL-3.0-or-later
#include "sync/qt/modControlBox.h"

bool EnleverFermer(QWidget& window) {
  if (!window.isWindow()) return false;
  window.setWindowFlags(Qt::Window | Qt::CustomizeWindowHint | Qt::WindowTitleHint |
                        Qt::WindowSystemMenuHint | Qt::WindowMinMaxButtonsHint);
  return !window.windowFlags().testFlag(Qt::WindowCloseButtonHint);
}
