// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QWidget>
#include <functional>
#include <memory>

#include "bridge/TraceBuffer.h"

namespace Ui {
class frmDebug;
}

// What the debug monitor opens besides showing the trace.
struct DebugCommands {
  std::function<void()> showCookieInformation;
  std::function<void()> showTestWindow;
};

// The debug monitor: the whole trace in a small window above all others. Closing hides it; the
// trace goes on without it.
class frmDebug : public QWidget {
  Q_OBJECT

 public:
  frmDebug(TraceBuffer& trace, DebugCommands commands);
  ~frmDebug() override;

 protected:
  void showEvent(QShowEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  void cmdClose_Click();
  void cmdInfos_Click() { commands_.showCookieInformation(); }
  void cmdTest_Click() { commands_.showTestWindow(); }
  void append(const Text& message);

  TraceBuffer& trace_;
  DebugCommands commands_;
  std::unique_ptr<Ui::frmDebug> ui_;
};
