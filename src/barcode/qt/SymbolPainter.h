// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QPainter>
#include <QPainterPath>
#include <QRect>
#include <QSize>

#include "barcode/qt/BarFont.h"
#include "text/Text.h"

// Makes one unit of a painter one dot of its device, from its own corner on, while it lives: what
// is then painted at whole units has crisp edges, whatever the scale of the screen.
class DotCoordinates {
 public:
  explicit DotCoordinates(QPainter& painter);
  ~DotCoordinates() { painter_.restore(); }
  DotCoordinates(const DotCoordinates&) = delete;
  DotCoordinates& operator=(const DotCoordinates&) = delete;

  // How many dots were one of the painter's units before.
  double scale() const { return scale_; }

 private:
  QPainter& painter_;
  double scale_ = 1;
};

// Paints a font string as its symbol: for the screen, the printer and every picture. Nothing where
// the font cannot show it whole.
class SymbolPainter {
 public:
  SymbolPainter(const BarFont& font, TextView text);

  bool isEmpty() const { return text_.empty(); }

  // In modules, quiet zones included.
  QSize size() const { return size_; }

  // Where the character at `position` begins, in modules from the left end; that of the end is
  // where the last one ends.
  int left(std::size_t position) const;

  // The position whose begin is nearest to `module`.
  std::size_t positionAt(double module) const;

  // Paints with the upper left corner at `corner`, a module `module` dots wide and high. Bars and
  // labels that lie outside `visible` may be left out.
  void paint(QPainter& painter, QPoint corner, int module, const QRect& visible) const;
  void paint(QPainter& painter, QPoint corner, int module) const;

  // The same as one outline (nonzero fill), from the origin on.
  QPainterPath outline(int module) const;

 private:
  const BarFont& font_;
  Text text_;
  QSize size_;
};
