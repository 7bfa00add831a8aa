// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <gtest/gtest.h>

#include <QFileInfo>
#include <QProcess>
#include <QStringList>
#include <QXmlStreamReader>
#include <map>
#include <set>
#include <string>
#include <utility>
#include <vector>

// What a decoder that knows nothing of this program reads in pictures of barcodes (zbarimg).

// Symbology and text of each symbol of a picture.
using Scanned = std::set<std::pair<std::string, std::string>>;

// One result for each file, in the order of `files`; their names without folder and ending differ.
inline std::vector<Scanned> scan(const QStringList& files) {
  QProcess zbarimg;
  zbarimg.setStandardErrorFile(QProcess::nullDevice());
  zbarimg.start(QStringLiteral("zbarimg"),
                QStringList({QStringLiteral("--quiet"), QStringLiteral("--xml"),
                             QStringLiteral("--set"), QStringLiteral("ean2.enable=1"),
                             QStringLiteral("--set"), QStringLiteral("ean5.enable=1")}) +
                    files);
  if (!zbarimg.waitForFinished(120'000)) ADD_FAILURE() << "zbarimg did not end";

  std::map<QString, Scanned> found;
  QString source;
  std::string symbology;
  QXmlStreamReader xml(zbarimg.readAllStandardOutput());
  while (!xml.atEnd()) {
    if (xml.readNext() != QXmlStreamReader::StartElement) continue;
    if (xml.name() == QLatin1String("source")) {
      source = QFileInfo(xml.attributes().value(QLatin1String("href")).toString()).fileName();
    } else if (xml.name() == QLatin1String("symbol")) {
      symbology = xml.attributes().value(QLatin1String("type")).toString().toStdString();
    } else if (xml.name() == QLatin1String("data")) {
      found[source].emplace(symbology, xml.readElementText().toStdString());
    }
  }
  std::vector<Scanned> results;
  for (const QString& file : files) results.push_back(found[QFileInfo(file).fileName()]);
  return results;
}
