// SPDX-License-Identifier: GPL-3.0-or-later
// Paints a drawing of the program's: make_icons DRAWING.svg FOLDER [WIDTH ...] lays N.png for each
// width N, without any for those of the icon on the desktop, into the folder.
#include <QDir>
#include <QImage>
#include <QPainter>
#include <QSvgRenderer>
#include <algorithm>
#include <cstdlib>
#include <iostream>
#include <vector>

namespace {

const std::vector<int> kSizes = {16, 22, 24, 32, 48, 64, 128, 256};

bool paint(QSvgRenderer& icon, int width, const QString& path) {
  const QSize drawn = icon.defaultSize();
  const QSize size(width, width * drawn.height() / drawn.width());
  QImage image(size, QImage::Format_ARGB32_Premultiplied);
  image.fill(Qt::transparent);
  QPainter painter(&image);
  icon.render(&painter);
  painter.end();
  return image.save(path, "PNG");
}

}  // namespace

int main(int argc, char** argv) {
  if (argc < 3) {
    std::cerr << "usage: make_icons DRAWING.svg FOLDER [WIDTH ...]\n";
    return 2;
  }
  QSvgRenderer icon(QString::fromLocal8Bit(argv[1]));
  const QDir folder(QString::fromLocal8Bit(argv[2]));
  if (!icon.isValid() || !folder.mkpath(QStringLiteral("."))) {
    std::cerr << "make_icons: cannot read " << argv[1] << " or make " << argv[2] << '\n';
    return 1;
  }
  std::vector<int> sizes;
  for (int i = 3; i < argc; ++i) sizes.push_back(std::max(1, std::atoi(argv[i])));
  for (const int size : sizes.empty() ? kSizes : sizes) {
    const QString path = folder.filePath(QString::number(size) + QStringLiteral(".png"));
    if (paint(icon, size, path)) continue;
    std::cerr << "make_icons: cannot write " << path.toStdString() << '\n';
    return 1;
  }
  return 0;
}
