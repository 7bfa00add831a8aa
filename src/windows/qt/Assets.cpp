// SPDX-License-Identifier: GPL-3.0-or-later
#include "windows/qt/Assets.h"

#include <QFile>

#include "platform/qt/QtText.h"

// Outside any namespace, as Qt asks for resources that live in a library.
static void registerAssets() { Q_INIT_RESOURCE(tavrollo); }

QString assetPath(const QString& file) {
  registerAssets();
  return QStringLiteral(":/tavrollo/") + file;
}

QIcon imageOfKey(TextView key) {
  const QString path = assetPath(QStringLiteral("images/") + toQt(key) + QStringLiteral(".svg"));
  return QFile::exists(path) ? QIcon(path) : QIcon();
}

QIcon programIcon() { return QIcon(assetPath(QStringLiteral("tavrollo.svg"))); }
