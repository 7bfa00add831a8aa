// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/qt/FrenchToolkit.h"

#include <QCoreApplication>
#include <QLibraryInfo>
#include <QTranslator>

void speakFrench() {
  auto* words = new QTranslator(qApp);
  if (words->load(QStringLiteral("qtbase_fr"), QLibraryInfo::path(QLibraryInfo::TranslationsPath)))
    QCoreApplication::installTranslator(words);
}
