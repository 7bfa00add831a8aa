// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QIcon>
#include <QPainter>
#include <QString>
#include <memory>

// The drawings that are built into the program (assets/*.svg): as they are where the toolkit can
// read such files, else as pictures that were painted from them in several sizes.

// `file` is a drawing's path in assets/ without its ending, such as "tray/frame1".
QIcon drawingIcon(const QString& file);

class Drawing {
 public:
  explicit Drawing(const QString& file);
  ~Drawing();
  Drawing(const Drawing&) = delete;
  Drawing& operator=(const Drawing&) = delete;

  // As it was drawn, in pixels.
  QSize size() const;

  // Fills `area` with it.
  void paint(QPainter& painter, const QRect& area) const;

 private:
  struct Data;
  std::unique_ptr<Data> data_;
};
