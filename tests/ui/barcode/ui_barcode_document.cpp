// SPDX-License-Identifier: GPL-3.0-or-later
// A barcode that is copied into a document is one there: LibreOffice, where it is installed, sets
// it in its font, and decoders read the page.
#include <QClipboard>
#include <QDir>
#include <QImage>
#include <QMimeData>
#include <QStandardPaths>

#include "barcode/BarcodeOptions.h"
#include "ui/barcode/ScannedWindow.h"

namespace {

const Typed kCases[] = {
    {0, "AB-12", "", false, {{"CODE-39", "AB-12"}}},
    {1, "TAVROLLO", "", false, {{"CODE-39", "TAVROLLO"}}},
    {2, "978020137962", "51999", false, {{"EAN-13", "9780201379624"}, {"EAN-5", "51999"}}},
    {3, "9638507", "12", false, {{"EAN-8", "96385074"}, {"EAN-2", "12"}}},
    {4, "94959697989900", "", false, {{"I2/5", "94959697989900"}}},
    {5, "Tavrollo \\{1}~ 12345678", "", false, {{"CODE-128", "Tavrollo \\{1}~ 12345678"}}},
};

class BarcodeDocument : public ScannedWindow {
 protected:
  // The environment of a user who has the fonts, and nothing else.
  QProcessEnvironment user() {
    scratch.makeFolders("share/fonts");
    const QDir embedded(QStringLiteral(":/tavrollo/fonts"));
    for (const QString& font : embedded.entryList({QStringLiteral("*.ttf")})) {
      EXPECT_TRUE(QFile::copy(embedded.filePath(font), file("share/fonts/" + font.toStdString())));
    }
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("HOME"), file("home"));
    environment.insert(QStringLiteral("XDG_DATA_HOME"), file("share"));
    environment.insert(QStringLiteral("XDG_CACHE_HOME"), file("cache"));
    return environment;
  }

  // The names of the documents, each with the copy of one case.
  QStringList documents() {
    QStringList names;
    for (const Typed& row : kCases) {
      fill(row, 24);
      view().selectAll();
      view().copy();
      const QMimeData& copied = *QGuiApplication::clipboard()->mimeData();
      const std::string name = std::to_string(names.size()) + ".rtf";
      scratch.write(name, copied.data(QStringLiteral("text/rtf")).toStdString());
      names << file(name);
    }
    return names;
  }
};

QByteArray outputOf(const QString& program, const QStringList& arguments,
                    const QProcessEnvironment& environment = {}) {
  constexpr int kMilliseconds = 150'000;  // a word processor's first start
  QProcess process;
  if (!environment.isEmpty()) process.setProcessEnvironment(environment);
  process.start(program, arguments);
  EXPECT_TRUE(process.waitForFinished(kMilliseconds)) << program.toStdString();
  return process.readAllStandardOutput();
}

}  // namespace

TEST_F(BarcodeDocument, ACopyHasItsFontAndIsRead) {
  const QString writer = QStandardPaths::findExecutable(QStringLiteral("soffice"));
  if (writer.isEmpty()) GTEST_SKIP() << "LibreOffice is not installed";
  outputOf(writer,
           QStringList({QStringLiteral("-env:UserInstallation=file://") + file("profile"),
                        QStringLiteral("--headless"), QStringLiteral("--convert-to"),
                        QStringLiteral("pdf"), QStringLiteral("--outdir"), file("")}) +
               documents(),
           user());

  QStringList pages;
  for (std::size_t i = 0; i < std::size(kCases); ++i) {
    const QString pdf = file(std::to_string(i) + ".pdf");
    const TextView family = barcodeOptions()[static_cast<std::size_t>(kCases[i].option)].font;
    const QString font = toQt(family).remove(QLatin1Char(' ')) + QStringLiteral("-Regular");
    EXPECT_TRUE(outputOf(QStringLiteral("pdffonts"), {pdf}).contains(font.toUtf8()))
        << kCases[i].source << " is not in " << font.toStdString();
    outputOf(
        QStringLiteral("pdftoppm"),
        {QStringLiteral("-gray"), QStringLiteral("-singlefile"), QStringLiteral("-H"),
         QStringLiteral("1200"), QStringLiteral("-r"), QStringLiteral("300"), pdf, pdf.chopped(4)});
    pages << file(std::to_string(i) + ".pgm");
    const QImage page = aroundInk(QImage(pages.last()));
    ASSERT_TRUE(page.save(pages.last()));
    EXPECT_EQ(scanWithZxing(page), kCases[i].read);
  }
  const std::vector<Scanned> found = scan(pages);
  for (std::size_t i = 0; i < std::size(kCases); ++i) EXPECT_EQ(found[i], kCases[i].read);
}
