// SPDX-License-Identifier: GPL-3.0-or-later
#include <QDir>
#include <QImage>
#include <algorithm>
#include <vector>

#include "windows/qt/Drawing.h"

// Outside any namespace, as Qt asks for resources that live in a library.
static void registerPictures() { Q_INIT_RESOURCE(painted_assets); }

namespace {

// The pictures of one drawing, whose names are their widths, the smallest first.
std::vector<QString> picturesOf(const QString& file) {
  registerPictures();
  const QDir folder(QStringLiteral(":/tavrollo/painted/") + file);
  std::vector<int> widths;
  for (const QString& name : folder.entryList({QStringLiteral("*.png")})) {
    widths.push_back(name.chopped(4).toInt());
  }
  std::sort(widths.begin(), widths.end());
  std::vector<QString> paths;
  for (const int width : widths) {
    paths.push_back(folder.filePath(QString::number(width) + QStringLiteral(".png")));
  }
  return paths;
}

}  // namespace

QIcon drawingIcon(const QString& file) {
  QIcon icon;
  for (const QString& picture : picturesOf(file)) icon.addFile(picture);
  return icon;
}

struct Drawing::Data {
  std::vector<QImage> pictures;  // the smallest is as it was drawn
};

Drawing::Drawing(const QString& file) : data_(std::make_unique<Data>()) {
  for (const QString& picture : picturesOf(file)) data_->pictures.emplace_back(picture);
}

Drawing::~Drawing() = default;

QSize Drawing::size() const {
  return data_->pictures.empty() ? QSize() : data_->pictures.front().size();
}

void Drawing::paint(QPainter& painter, const QRect& area) const {
  const double dots = area.width() * painter.device()->devicePixelRatio();
  for (const QImage& picture : data_->pictures) {
    if (picture.width() < dots && &picture != &data_->pictures.back()) continue;
    painter.save();
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.drawImage(area, picture);
    painter.restore();
    return;
  }
}
