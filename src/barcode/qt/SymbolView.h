// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QAbstractScrollArea>
#include <QTimer>
#include <cstdint>
#include <memory>

#include "barcode/qt/SymbolPainter.h"

// A font string shown in its font: the preview. Its characters can be selected and copied, but not
// typed into: the symbol stays the one that was encoded. Every module has the same whole number of
// the screen's dots.
class SymbolView : public QAbstractScrollArea {
  Q_OBJECT

 public:
  explicit SymbolView(QWidget* parent = nullptr);

  void setText(const Text& text);
  void setFontFamily(TextView family);
  void setFontSize(std::int16_t points);

  const Text& text() const { return text_; }
  const BarFont& barFont() const { return *font_; }
  std::int16_t fontSize() const { return points_; }

  Text selectedText() const;
  void selectAll();

  // The selection goes to the clipboard, as plain text and as text in its font.
  void copy() const;

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void contextMenuEvent(QContextMenuEvent* event) override;

 private:
  void symbolChanged();
  void updateScrollBars();
  void select(std::size_t anchor, std::size_t end);
  bool extendSelection(const QKeyEvent& event);
  void paintSymbol(QPainter& painter) const;

  // In the screen's dots: a module, and where the symbol begins in the viewport.
  int module(double scale) const;
  QPoint corner(double scale) const;
  std::size_t positionAt(QPointF place) const;

  Text text_;
  std::int16_t points_;
  std::unique_ptr<BarFont> font_;
  std::unique_ptr<SymbolPainter> symbol_;
  std::size_t anchor_ = 0;  // where the selection began
  std::size_t end_ = 0;     // where it was drawn to
  double scaleOfScrollBars_ = 1;
  QTimer afterPainting_;  // brings the scroll bars up to date on another screen
};
