// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QWidget>
#include <memory>

#include "bridge/TraceBuffer.h"

namespace Ui {
class frmDebug;
}

// The debug monitor: the whole trace in a small window above all others. Closing hides it; the
// trace goes on without it.
class frmDebug : public QWidget {
  Q_OBJECT

 public:
  explicit frmDebug(TraceBuffer& trace);
  ~frmDebug() override;

 protected:
  void showEvent(QShowEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  void cmdClose_Click();
  void append(const Text& message);

  TraceBuffer& trace_;
  std::unique_ptr<Ui::frmDebug> ui_;
};
