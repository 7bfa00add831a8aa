// SPDX-License-Identifier: GPL-3.0-or-later
#include "barcode/qt/SymbolPicture.h"

#include <QBuffer>
#include <algorithm>
#include <cmath>

#include "barcode/ModuleSize.h"

namespace {

constexpr double kInchesPerMetre = 1 / 0.0254;
constexpr int kDotsPerInch = 300;
constexpr int kLongestSide = 32767;  // more than that is beyond many programs
constexpr double kMostDots = 32e6;   // with four bytes to a dot 128 MB, where readers give up

int moduleOfPicture(const SymbolPainter& symbol, int points, int dotsPerInch) {
  if (symbol.isEmpty()) return 0;
  const double wanted = moduleWidth(points, dotsPerInch);
  return std::min(moduleThatFits(wanted, symbol.size().width(), kLongestSide),
                  moduleThatFits(wanted, symbol.size().height(), kLongestSide));
}

void addPoint(QByteArray& text, char command, QPointF point) {
  text += command + QByteArray::number(point.x()) + ' ' + QByteArray::number(point.y());
}

// An outline in the words of a drawing's path.
QByteArray pathData(const QPainterPath& outline) {
  QByteArray text;
  for (int i = 0; i < outline.elementCount(); ++i) {
    const QPainterPath::Element& element = outline.elementAt(i);
    switch (element.type) {
      case QPainterPath::MoveToElement: addPoint(text, 'M', element); break;
      case QPainterPath::LineToElement: addPoint(text, 'L', element); break;
      case QPainterPath::CurveToElement: addPoint(text, 'C', element); break;
      case QPainterPath::CurveToDataElement: addPoint(text, ' ', element); break;
    }
  }
  return text;
}

QByteArray inMillimetres(int units, int unitsPerInch) {
  constexpr double kMillimetresPerInch = 25.4;
  return QByteArray::number(units * kMillimetresPerInch / unitsPerInch) + "mm";
}

QByteArray svg(const SymbolPainter& symbol, int points) {
  // A drawing has no dots of its own: one of its units is a tenth of a point.
  constexpr int kUnitsPerInch = 720;
  const int module = moduleOfPicture(symbol, points, kUnitsPerInch);
  if (module == 0) return {};
  const QSize size = symbol.size() * module;
  const QByteArray width = QByteArray::number(size.width());
  const QByteArray height = QByteArray::number(size.height());
  return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
         "<svg xmlns=\"http://www.w3.org/2000/svg\" version=\"1.1\" width=\"" +
         inMillimetres(size.width(), kUnitsPerInch) + "\" height=\"" +
         inMillimetres(size.height(), kUnitsPerInch) + "\" viewBox=\"0 0 " + width + ' ' + height +
         "\">\n<rect width=\"" + width + "\" height=\"" + height +
         "\" fill=\"#ffffff\"/>\n<path fill=\"#000000\" fill-rule=\"nonzero\" d=\"" +
         pathData(symbol.outline(module)) + "\"/>\n</svg>\n";
}

}  // namespace

QImage symbolImage(const SymbolPainter& symbol, int points) {
  const int module = moduleThatCovers(moduleOfPicture(symbol, points, kDotsPerInch),
                                      symbol.size().width(), symbol.size().height(), kMostDots);
  if (module == 0) return {};
  QImage image(symbol.size() * module, QImage::Format_Grayscale8);
  if (image.isNull()) return {};
  image.fill(Qt::white);
  QPainter painter(&image);
  symbol.paint(painter, {}, module);
  painter.end();
  const double exactDots = module / moduleWidth(points, 1);
  const int dotsPerMetre = static_cast<int>(std::lround(exactDots * kInchesPerMetre));
  image.setDotsPerMeterX(dotsPerMetre);
  image.setDotsPerMeterY(dotsPerMetre);
  return image;
}

QByteArray symbolPicture(const SymbolPainter& symbol, int points, PictureFormat format) {
  if (format == PictureFormat::Svg) return svg(symbol, points);
  const QImage image = symbolImage(symbol, points);
  QByteArray bytes;
  QBuffer buffer(&bytes);
  if (image.isNull() || !image.save(&buffer, "PNG")) return {};
  return bytes;
}
