// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QProcess>
#include <QStringList>

// A real tray of the old kind, for as long as this lives.
class Trayer {
 public:
  Trayer() { start(); }
  ~Trayer() { stop(); }

  void start() {
    process_.start(QStringLiteral("trayer"),
                   {QStringLiteral("--edge"), QStringLiteral("bottom"), QStringLiteral("--align"),
                    QStringLiteral("right"), QStringLiteral("--height"), QStringLiteral("28"),
                    QStringLiteral("--SetDockType"), QStringLiteral("true")});
  }
  void stop() {
    process_.terminate();
    process_.waitForFinished();
  }

 private:
  QProcess process_;
};
