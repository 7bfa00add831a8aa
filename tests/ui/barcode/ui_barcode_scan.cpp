// SPDX-License-Identifier: GPL-3.0-or-later
// What the window shows, prints and saves is read back by a decoder, and is what went in.
#include <QCheckBox>
#include <QImage>
#include <QLineEdit>
#include <QPainter>
#include <QPrinter>
#include <QRadioButton>
#include <QScrollBar>
#include <QSvgRenderer>

#include "barcode/ModuleSize.h"
#include "barcode/frmCodeBarrePrev.h"
#include "barcode/qt/SymbolPrint.h"
#include "barcode/qt/SymbolView.h"
#include "platform/qt/QtText.h"
#include "support/Doubles.h"
#include "support/Scratch.h"
#include "ui/UiMain.h"
#include "ui/barcode/Scanner.h"

namespace {

struct Case {
  int option;
  const char* source;
  const char* addOn;
  bool withCheck;
  Scanned read;
};

const Case kCases[] = {
    {0, "AB-12", "", false, {{"CODE-39", "AB-12"}}},
    {0, "A.B C/D+1%2$3 4", "", false, {{"CODE-39", "A.B C/D+1%2$3 4"}}},
    {1, "TAVROLLO 2026", "", false, {{"CODE-39", "TAVROLLO 2026"}}},
    {2, "1234", "", false, {{"EAN-13", "0000000012348"}}},
    {2, "400638133393", "", false, {{"EAN-13", "4006381333931"}}},
    {2, "978020137962", "12", false, {{"EAN-13", "9780201379624"}, {"EAN-2", "12"}}},
    {2, "97802013796251999", "", false, {{"EAN-13", "9780201379624"}, {"EAN-5", "51999"}}},
    {3, "9638507", "", false, {{"EAN-8", "96385074"}}},
    {4, "12345670", "", false, {{"I2/5", "12345670"}}},
    {4, "1234567", "", true, {{"I2/5", "12345670"}}},
    {5, "Tavrollo \\{1}~", "", false, {{"CODE-128", "Tavrollo \\{1}~"}}},
    {5, "AB12345678901234", "", false, {{"CODE-128", "AB12345678901234"}}},
};

// Sizes: the smallest, those whose module is no whole dot, usual and large ones.
constexpr int kSizes[] = {12, 18, 24, 36, 48, 72};

// A picture as the decoder is to have it: with one dot to a module each dot stands there four
// times, since zbarimg loses some bars of a single dot (of such Code 128 it reads four symbols of
// five).
QImage readable(const QImage& image, int module) {
  return module == 1 ? image.scaled(image.size() * 2) : image;
}

class BarcodeScan : public testing::Test {
 protected:
  BarcodeScan() {
    window.Form_Load();
    window.show();
  }

  void fill(const Case& row, int size) {
    const std::string option = "OptType_" + std::to_string(row.option);
    control<QRadioButton>(window, option.c_str()).click();
    control<QLineEdit>(window, "txtSource").setText(QString::fromLatin1(row.source));
    control<QLineEdit>(window, "TxtAdd").setText(QString::fromLatin1(row.addOn));
    control<QCheckBox>(window, "chkKey25i").setChecked(row.withCheck);
    control<QLineEdit>(window, "TxtSize").setText(QString::number(size));
  }

  void click(const char* name) { control<QAbstractButton>(window, name).click(); }
  SymbolView& view() { return control<SymbolView>(window, "rtbCBar"); }

  // The name of one more picture to be read; it shows `row`.
  QString add(const Case& row, const std::string& what) {
    const std::string name = std::to_string(rows.size()) + ".png";
    rows.push_back({&row, what});
    files.append(QString::fromStdString(scratch.path(name)));
    return files.last();
  }

  void expectEachIsRead(std::size_t rowsOfEach) {
    const std::vector<Scanned> found = scan(files);
    for (std::size_t i = 0; i < rows.size(); ++i) {
      EXPECT_EQ(found[i], rows[i].first->read) << rows[i].first->source << rows[i].second;
    }
    EXPECT_GE(rows.size(), std::size(kCases) * rowsOfEach) << "nothing was looked at";
  }

  Scratch scratch;
  Text programFolder = scratch.text();
  LocaleData locale = frenchLocale();
  Journal journal;
  RecordingShell shell{journal};
  ScriptedQuestions questions{journal};
  QString printed;
  frmCodeBarrePrev window{{.programFolder = programFolder,
                           .locale = locale,
                           .shell = shell,
                           .questions = questions,
                           .fontPage = [] { return Text(); }},
                          [this](QPrinter& printer, bool) {
                            printer.setOutputFormat(QPrinter::PdfFormat);
                            printer.setOutputFileName(printed);
                            return true;
                          }};
  std::vector<std::pair<const Case*, std::string>> rows;
  QStringList files;
};

}  // namespace

TEST_F(BarcodeScan, TheWindowAtEverySize) {
  window.resize(1100, 780);
  for (const Case& row : kCases) {
    for (const int size : kSizes) {
      fill(row, size);
      if (view().horizontalScrollBar()->maximum() > 0) continue;  // not the whole is seen
      const QImage image = view().viewport()->grab().toImage();
      const double dots = view().logicalDpiX() * image.devicePixelRatio();
      const int module = wholeModule(moduleWidth(size, dots));
      ASSERT_TRUE(readable(image, module).save(add(row, " at " + std::to_string(size)), "PNG", 80));
    }
  }
  expectEachIsRead(5);
}

TEST_F(BarcodeScan, TheSavedPngAtTheSmallestAndAtUsualSizes) {
  for (const Case& row : kCases) {
    for (const int size : {6, 12, 36}) {
      fill(row, size);
      const QString png = add(row, " at " + std::to_string(size));
      questions.newFiles = {fromQt(png)};
      click("cmdSaveImage");
      const int module = wholeModule(moduleWidth(size, 300));
      ASSERT_TRUE(readable(QImage(png), module).save(png));
    }
  }
  expectEachIsRead(3);
}

TEST_F(BarcodeScan, TheSavedSvg) {
  for (const Case& row : kCases) {
    fill(row, 36);
    const QString png = add(row, "");
    const Text svg = scratch.text("drawing.svg");
    questions.newFiles = {svg};
    click("cmdSaveImage");
    QSvgRenderer drawing(toQt(svg));
    ASSERT_TRUE(drawing.isValid());
    QImage image(drawing.viewBox().size() / 5, QImage::Format_Grayscale8);
    QPainter painter(&image);
    drawing.render(&painter);
    painter.end();
    ASSERT_TRUE(image.save(png));
  }
  expectEachIsRead(1);
}

TEST_F(BarcodeScan, ThePrintedPage) {
  for (const Case& row : kCases) {
    fill(row, 36);
    const QString png = add(row, "");
    printed = QString::fromStdString(scratch.path("page.pdf"));
    click("cmdPrint");
    ASSERT_TRUE(questions.boxes.empty());
    const QString stem = png.chopped(4);
    ASSERT_EQ(QProcess::execute(
                  QStringLiteral("pdftoppm"),
                  {QStringLiteral("-png"), QStringLiteral("-gray"), QStringLiteral("-singlefile"),
                   QStringLiteral("-H"), QStringLiteral("500"), QStringLiteral("-r"),
                   QStringLiteral("200"), printed, stem}),
              0);
  }
  expectEachIsRead(1);
}
