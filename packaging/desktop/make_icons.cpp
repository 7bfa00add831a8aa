// SPDX-License-Identifier: GPL-3.0-or-later
// Paints the program's icon for the desktop: make_icons ICON.svg FOLDER lays N.png for each size N
// of kSizes into the folder.
#include <QDir>
#include <QImage>
#include <QPainter>
#include <QSvgRenderer>
#include <iostream>

namespace {

constexpr int kSizes[] = {16, 22, 24, 32, 48, 64, 128, 256};

bool paint(QSvgRenderer& icon, int size, const QString& path) {
  QImage image(size, size, QImage::Format_ARGB32_Premultiplied);
  image.fill(Qt::transparent);
  QPainter painter(&image);
  icon.render(&painter);
  painter.end();
  return image.save(path, "PNG");
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 3) {
    std::cerr << "usage: make_icons ICON.svg FOLDER\n";
    return 2;
  }
  QSvgRenderer icon(QString::fromLocal8Bit(argv[1]));
  const QDir folder(QString::fromLocal8Bit(argv[2]));
  if (!icon.isValid() || !folder.mkpath(QStringLiteral("."))) {
    std::cerr << "make_icons: cannot read " << argv[1] << " or make " << argv[2] << '\n';
    return 1;
  }
  for (const int size : kSizes) {
    const QString path = folder.filePath(QString::number(size) + QStringLiteral(".png"));
    if (paint(icon, size, path)) continue;
    std::cerr << "make_icons: cannot write " << path.toStdString() << '\n';
    return 1;
  }
  return 0;
}
