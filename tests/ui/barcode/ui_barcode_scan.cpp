// SPDX-License-Identifier: GPL-3.0-or-later
// What the window shows, prints and saves is read back by decoders, and is what went in.
#include <QImage>
#include <QPainter>
#include <QScrollBar>
#include <QSvgRenderer>

#include "barcode/ModuleSize.h"
#include "ui/barcode/ScannedWindow.h"

namespace {

const Typed kCases[] = {
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

// A picture as zbarimg is to have it: with one dot to a module each dot stands there four times,
// since it loses some bars of a single dot.
QImage readable(const QImage& image, int module) {
  return module == 1 ? image.scaled(image.size() * 2) : image;
}

class BarcodeScan : public ScannedWindow {
 protected:
  // One more picture to be read, in which a module has `module` dots; it shows `row`.
  void add(const Typed& row, const std::string& what, const QImage& image, int module) {
    const std::string told = row.source + what;
    ASSERT_FALSE(image.isNull()) << told;
    EXPECT_EQ(scanWithZxing(image), row.read) << told;
    files.append(file(std::to_string(rows.size()) + ".png"));
    ASSERT_TRUE(readable(image, module).save(files.last(), "PNG", 80));
    rows.push_back({&row, told});
  }

  void expectEachIsRead(std::size_t rowsOfEach) {
    const std::vector<Scanned> found = scan(files);
    for (std::size_t i = 0; i < rows.size(); ++i) {
      EXPECT_EQ(found[i], rows[i].first->read) << rows[i].second;
    }
    EXPECT_GE(rows.size(), std::size(kCases) * rowsOfEach) << "nothing was looked at";
  }

  std::vector<std::pair<const Typed*, std::string>> rows;
  QStringList files;
};

}  // namespace

TEST_F(BarcodeScan, TheWindowAtEverySize) {
  window.resize(1100, 780);
  for (const Typed& row : kCases) {
    for (const int size : kSizes) {
      fill(row, size);
      if (view().horizontalScrollBar()->maximum() > 0) continue;  // not the whole is seen
      const QImage image = view().viewport()->grab().toImage();
      const double dots = view().logicalDpiX() * image.devicePixelRatio();
      add(row, " at " + std::to_string(size), image, wholeModule(moduleWidth(size, dots)));
    }
  }
  expectEachIsRead(5);
}

TEST_F(BarcodeScan, TheSavedPngAtTheSmallestAndAtUsualSizes) {
  for (const Typed& row : kCases) {
    for (const int size : {6, 12, 36}) {
      fill(row, size);
      questions.newFiles = {scratch.text("saved.png")};
      click("cmdSaveImage");
      add(row, " at " + std::to_string(size), QImage(file("saved.png")),
          wholeModule(moduleWidth(size, 300)));
    }
  }
  expectEachIsRead(3);
}

TEST_F(BarcodeScan, TheSavedSvg) {
  for (const Typed& row : kCases) {
    fill(row, 36);
    questions.newFiles = {scratch.text("drawing.svg")};
    click("cmdSaveImage");
    QSvgRenderer drawing(file("drawing.svg"));
    ASSERT_TRUE(drawing.isValid());
    constexpr int kModule = 3;
    const int module = wholeModule(moduleWidth(36, 720));
    QImage image(drawing.viewBox().size() * kModule / module, QImage::Format_Grayscale8);
    QPainter painter(&image);
    drawing.render(&painter);
    painter.end();
    add(row, "", image, kModule);
  }
  expectEachIsRead(1);
}

TEST_F(BarcodeScan, ThePrintedPage) {
  constexpr int kDotsPerInch = 200;
  for (const Typed& row : kCases) {
    fill(row, 36);
    add(row, "", printedPage(kDotsPerInch), wholeModule(moduleWidth(36, kDotsPerInch)));
  }
  expectEachIsRead(1);
}
