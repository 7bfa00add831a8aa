// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QWidget>
#include <ctime>
#include <memory>

#include "windows/SplashTexts.h"

class Drawing;
namespace Ui {
class frmSplash;
}

// What the splash window shows, and how large.
struct SplashContents {
  ProgramVersion version;
  std::time_t programModified = 0;  // when the program file was last written
  LocaleData locale = frenchLocale();
  double scaleX = 567.0;
  double scaleY = 567.0;
};

// The picture with version and build date, at start and as the about box. It never takes the focus,
// is unloaded by a click, and deletes itself when it is unloaded.
class frmSplash : public QWidget {
  Q_OBJECT

 public:
  explicit frmSplash(const SplashContents& contents);
  ~frmSplash() override;

  // Sizes the window to its picture (unless it is minimised), centres it, fills the labels.
  void Form_Load(const SplashContents& contents);
  void Form_Click();

 protected:
  void mouseReleaseEvent(QMouseEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  void placeLabels();

  std::unique_ptr<Ui::frmSplash> ui_;
  std::unique_ptr<Drawing> picture_;
};
