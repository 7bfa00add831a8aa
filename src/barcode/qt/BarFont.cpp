// SPDX-License-Identifier: GPL-3.0-or-later
#include "barcode/qt/BarFont.h"

#include <QFile>
#include <algorithm>
#include <cmath>
#include <optional>

#include "barcode/ModuleSize.h"
#include "platform/qt/QtText.h"

// Outside any namespace, as Qt asks for resources that live in a library.
static void registerFonts() { Q_INIT_RESOURCE(barcode_fonts); }

namespace {

QByteArray fontFile(TextView family) {
  registerFonts();
  QFile file(QStringLiteral(":/tavrollo/fonts/") + toQt(family).remove(QLatin1Char(' ')) +
             QStringLiteral(".ttf"));
  return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

bool isWhole(double number) {
  constexpr double kRounding = 1e-6;
  return std::abs(number - std::round(number)) < kRounding;
}

// A contour as a bar: the whole of an upright rectangle on whole modules.
std::optional<QRect> barOf(const QPolygonF& contour) {
  constexpr qsizetype kClosedRectangle = 5;
  const QRectF box = contour.boundingRect();
  if (contour.size() != kClosedRectangle) return std::nullopt;
  for (const QPointF& point : contour) {
    const bool onSide = point.x() == box.left() || point.x() == box.right();
    const bool onEnd = point.y() == box.top() || point.y() == box.bottom();
    if (!onSide || !onEnd || !isWhole(point.x()) || !isWhole(point.y())) return std::nullopt;
  }
  return box.toRect();
}

}  // namespace

BarFont::BarFont(TextView family) : family_(family) {
  const QByteArray bytes = fontFile(family);
  if (bytes.isEmpty()) return;
  // At this size the outlines come in the font's own units, and nothing is rounded.
  font_.loadFromData(bytes, 1, QFont::PreferNoHinting);
  if (!font_.isValid()) return;
  font_.setPixelSize(font_.unitsPerEm());
  unitsPerModule_ = font_.unitsPerEm() / kModulesPerEm;
  ascent_ = static_cast<int>(std::lround(font_.ascent() / unitsPerModule_));
  height_ = ascent_ + static_cast<int>(std::lround(font_.descent() / unitsPerModule_));
}

bool BarFont::canShow(TextView text) const {
  return isThere() && std::all_of(text.begin(), text.end(), [this](char16_t character) {
           return glyph(character).advance > 0;
         });
}

const BarFont::Glyph& BarFont::glyph(char16_t character) const {
  const auto found = glyphs_.find(character);
  if (found != glyphs_.end()) return found->second;
  return glyphs_.emplace(character, readGlyph(character)).first->second;
}

int BarFont::width(TextView text) const {
  int modules = 0;
  for (const char16_t character : text) modules += glyph(character).advance;
  return modules;
}

BarFont::Glyph BarFont::readGlyph(char16_t character) const {
  Glyph glyph;
  glyph.label.setFillRule(Qt::WindingFill);  // the strokes of a label cross each other
  if (!isThere() || !font_.supportsCharacter(QChar(character))) return glyph;
  const quint32 index = font_.glyphIndexesForString(QString(QChar(character))).value(0);
  glyph.advance = static_cast<int>(
      std::lround(font_.advancesForGlyphIndexes({index}).value(0).x() / unitsPerModule_));

  const QTransform toModules = QTransform::fromScale(1 / unitsPerModule_, 1 / unitsPerModule_);
  for (const QPolygonF& contour : font_.pathForGlyph(index).toSubpathPolygons(toModules)) {
    if (const std::optional<QRect> bar = barOf(contour)) {
      glyph.bars.push_back(*bar);
    } else {
      glyph.label.addPolygon(contour);
    }
  }
  std::sort(glyph.bars.begin(), glyph.bars.end(),
            [](const QRect& a, const QRect& b) { return a.left() < b.left(); });
  return glyph;
}
