// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <gtest/gtest.h>

#include <QFileInfo>
#include <QImage>
#include <QProcess>
#include <QStringList>
#include <QXmlStreamReader>
#include <map>
#include <set>
#include <string>
#include <utility>
#include <vector>

#define ZX_USE_UTF8 1  // texts are bytes, as they are in later versions
#include <ZXing/ReadBarcode.h>

// What two decoders that know nothing of this program, nor of each other, read in pictures of
// barcodes: zbarimg, and the library zxing-cpp.

// Symbology, as zbarimg calls it, and text of each symbol of a picture.
using Scanned = std::set<std::pair<std::string, std::string>>;

// One result for each file, in the order of `files`; their names without folder and ending differ.
// `settings` are further ones of zbarimg's, "symbology.name=value".
inline std::vector<Scanned> scan(const QStringList& files, const QStringList& settings = {}) {
  QStringList arguments{QStringLiteral("--quiet"), QStringLiteral("--xml")};
  for (const QString& setting :
       QStringList({QStringLiteral("ean2.enable=1"), QStringLiteral("ean5.enable=1")}) + settings) {
    arguments << QStringLiteral("--set") << setting;
  }
  QProcess zbarimg;
  zbarimg.setStandardErrorFile(QProcess::nullDevice());
  zbarimg.start(QStringLiteral("zbarimg"), arguments + files);
  constexpr int kMilliseconds = 600'000;  // the test's own limit is what ends it
  if (!zbarimg.waitForFinished(kMilliseconds)) ADD_FAILURE() << "zbarimg did not end";

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

// The same by zxing-cpp, which gives an add-on behind its symbol's text and a blank.
inline Scanned scanWithZxing(const QImage& picture) {
  using ZXing::BarcodeFormat;
  const std::map<BarcodeFormat, std::string> names = {{BarcodeFormat::Code39, "CODE-39"},
                                                      {BarcodeFormat::EAN13, "EAN-13"},
                                                      {BarcodeFormat::EAN8, "EAN-8"},
                                                      {BarcodeFormat::ITF, "I2/5"},
                                                      {BarcodeFormat::Code128, "CODE-128"}};
  ZXing::DecodeHints hints;
  hints.setFormats(BarcodeFormat::Code39 | BarcodeFormat::EAN13 | BarcodeFormat::EAN8 |
                   BarcodeFormat::ITF | BarcodeFormat::Code128);
  hints.setEanAddOnSymbol(ZXing::EanAddOnSymbol::Read);
  hints.setTryRotate(false);
  hints.setTryDownscale(false);  // version 1.4 aborts when it finds a symbol in both sizes
  const QImage grey = picture.convertToFormat(QImage::Format_Grayscale8);
  Scanned scanned;
  for (const ZXing::Result& result :
       ZXing::ReadBarcodes({grey.constBits(), grey.width(), grey.height(), ZXing::ImageFormat::Lum,
                            static_cast<int>(grey.bytesPerLine())},
                           hints)) {
    const std::string& name = names.at(result.format());
    const std::string text = result.text();
    const std::size_t blank = name.starts_with("EAN") ? text.find(' ') : std::string::npos;
    scanned.emplace(name, text.substr(0, blank));
    if (blank == std::string::npos) continue;
    const std::string addOn = text.substr(blank + 1);
    scanned.emplace("EAN-" + std::to_string(addOn.size()), addOn);
  }
  return scanned;
}
