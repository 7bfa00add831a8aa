// SPDX-License-Identifier: GPL-3.0-or-later
#include <QFile>
#include <QSvgRenderer>

#include "windows/qt/Drawing.h"

// Outside any namespace, as Qt asks for resources that live in a library.
static void registerAssets() { Q_INIT_RESOURCE(tavrollo); }

namespace {

QString pathOf(const QString& file) {
  registerAssets();
  return QStringLiteral(":/tavrollo/") + file + QStringLiteral(".svg");
}

}  // namespace

QIcon drawingIcon(const QString& file) {
  const QString path = pathOf(file);
  return QFile::exists(path) ? QIcon(path) : QIcon();
}

struct Drawing::Data {
  explicit Data(const QString& file) : renderer(pathOf(file)) {}
  QSvgRenderer renderer;
};

Drawing::Drawing(const QString& file) : data_(std::make_unique<Data>(file)) {}

Drawing::~Drawing() = default;

QSize Drawing::size() const { return data_->renderer.defaultSize(); }

void Drawing::paint(QPainter& painter, const QRect& area) const {
  data_->renderer.render(&painter, area);
}
