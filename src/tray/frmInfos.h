// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QTimer>
#include <QWidget>
#include <memory>

#include "text/Text.h"
#include "tray/NoticeMotion.h"

class DesktopNotice;
namespace Ui {
class frmInfos;
}

// The notice that slides up from below the lower right corner of the screen and down again. It is
// above all other windows and never takes the focus.
class frmInfos : public QWidget {
  Q_OBJECT

 public:
  // With `desktop` every notice is the desktop's own, and this window never appears.
  explicit frmInfos(std::unique_ptr<DesktopNotice> desktop);
  ~frmInfos() override;

  void Form_Load();
  void Form_Click();

  // To be called once at start: the window waits below the screen.
  void setUp();

  // Shows `text`, which may be empty. A notice that is up gets the new text and goes on.
  void showNotice(TextView text);

 protected:
  void mousePressEvent(QMouseEvent* event) override;
  void paintEvent(QPaintEvent* event) override;

 private:
  void Timer1_Timer();
  void follow();

  std::unique_ptr<Ui::frmInfos> ui_;
  std::unique_ptr<DesktopNotice> desktop_;
  NoticeMotion motion_;
  QTimer Timer1_;
};
