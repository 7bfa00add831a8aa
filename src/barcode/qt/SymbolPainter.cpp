// SPDX-License-Identifier: GPL-3.0-or-later
#include "barcode/qt/SymbolPainter.h"

#include <cmath>

#include "barcode/ModuleSize.h"

DotCoordinates::DotCoordinates(QPainter& painter) : painter_(painter) {
  painter.save();
  const QTransform before = painter.deviceTransform();
  scale_ = before.m11();
  painter.setWorldTransform({});
  const QTransform base = painter.deviceTransform();
  const QTransform wanted =
      QTransform::fromTranslate(std::round(before.dx()), std::round(before.dy()));
  painter.setWorldTransform(wanted * base.inverted());
}

SymbolPainter::SymbolPainter(const BarFont& font, TextView text)
    : font_(font), text_(font.canShow(text) ? text : TextView()) {
  size_ = {2 * kQuietZone + font.width(text_), font.height()};
}

int SymbolPainter::left(std::size_t position) const {
  return kQuietZone + font_.width(TextView(text_).substr(0, position));
}

std::size_t SymbolPainter::positionAt(double module) const {
  double begin = kQuietZone;
  for (std::size_t position = 0; position < text_.size(); ++position) {
    const int advance = font_.glyph(text_[position]).advance;
    if (module < begin + advance / 2.0) return position;
    begin += advance;
  }
  return text_.size();
}

namespace {

// Where a glyph's parts lie whose baseline begins at `origin`.

QRect barAt(const QRect& bar, QPoint origin, int module) {
  return {origin + bar.topLeft() * module, bar.size() * module};
}

QPainterPath labelAt(const BarFont::Glyph& glyph, QPoint origin, int module) {
  return QTransform(module, 0, 0, module, origin.x(), origin.y()).map(glyph.label);
}

}  // namespace

void SymbolPainter::paint(QPainter& painter, QPoint corner, int module) const {
  paint(painter, corner, module, QRect(corner, size_ * module));
}

void SymbolPainter::paint(QPainter& painter, QPoint corner, int module,
                          const QRect& visible) const {
  const int baseline = corner.y() + font_.ascent() * module;
  int x = corner.x() + kQuietZone * module;
  for (const char16_t character : text_) {
    const BarFont::Glyph& glyph = font_.glyph(character);
    const int next = x + glyph.advance * module;
    if (next > visible.left() && x <= visible.right()) {
      painter.setRenderHint(QPainter::Antialiasing, false);
      for (const QRect& bar : glyph.bars) {
        painter.fillRect(barAt(bar, {x, baseline}, module), Qt::black);
      }
      if (!glyph.label.isEmpty()) {
        painter.setRenderHint(QPainter::Antialiasing, true);
        painter.fillPath(labelAt(glyph, {x, baseline}, module), Qt::black);
      }
    }
    x = next;
  }
}

QPainterPath SymbolPainter::outline(int module) const {
  QPainterPath path;
  path.setFillRule(Qt::WindingFill);
  const int baseline = font_.ascent() * module;
  int x = kQuietZone * module;
  for (const char16_t character : text_) {
    const BarFont::Glyph& glyph = font_.glyph(character);
    for (const QRect& bar : glyph.bars) path.addRect(barAt(bar, {x, baseline}, module));
    path.addPath(labelAt(glyph, {x, baseline}, module));
    x += glyph.advance * module;
  }
  return path;
}
