// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <gtest/gtest.h>

#include <QCheckBox>
#include <QLineEdit>
#include <QPrinter>
#include <QProcess>
#include <QRadioButton>
#include <algorithm>
#include <string>

#include "barcode/frmCodeBarrePrev.h"
#include "barcode/qt/SymbolView.h"
#include "platform/qt/QtText.h"
#include "support/Doubles.h"
#include "support/Scratch.h"
#include "ui/UiMain.h"
#include "ui/barcode/Decoders.h"

// What is typed into the barcode window, and what a decoder is to read.
struct Typed {
  int option = 0;  // the type's option button
  std::string source;
  std::string addOn;
  bool withCheck = false;
  Scanned read;
};

// What stands on a page, without the empty rows above and below it.
inline QImage aroundInk(const QImage& page) {
  const auto hasInk = [&page](int y) {
    const uchar* const row = page.constScanLine(y);
    return std::any_of(row, row + page.width(), [](uchar grey) { return grey < 128; });
  };
  constexpr int kRoom = 20;
  int top = 0;
  while (top < page.height() && !hasInk(top)) ++top;
  int bottom = page.height();
  while (bottom > top && !hasInk(bottom - 1)) --bottom;
  return page.copy(QRect(0, top - kRoom, page.width(), bottom - top + 2 * kRoom) & page.rect());
}

// The barcode window, filled by hand, for tests that read its symbols with decoders. It prints to
// the document page.pdf of a folder of its own.
class ScannedWindow : public testing::Test {
 protected:
  ScannedWindow() {
    window.Form_Load();
    window.show();
  }

  void fill(const Typed& typed, int size) {
    click(("OptType_" + std::to_string(typed.option)).c_str());
    control<QLineEdit>(window, "txtSource").setText(QString::fromLatin1(typed.source.c_str()));
    control<QLineEdit>(window, "TxtAdd").setText(QString::fromLatin1(typed.addOn.c_str()));
    control<QCheckBox>(window, "chkKey25i").setChecked(typed.withCheck);
    control<QLineEdit>(window, "TxtSize").setText(QString::number(size));
  }

  void click(const char* name) { control<QAbstractButton>(window, name).click(); }
  SymbolView& view() { return control<SymbolView>(window, "rtbCBar"); }
  QString file(const std::string& name) { return QString::fromStdString(scratch.path(name)); }

  // What is on the printed page, as a copier of `dotsPerInch` sees it. Null when nothing was
  // printed.
  QImage printedPage(int dotsPerInch) {
    constexpr int kInches = 4;
    click("cmdPrint");
    if (!questions.boxes.empty()) return {};
    const auto number = [](int value) { return QString::number(value); };
    EXPECT_EQ(QProcess::execute(
                  QStringLiteral("pdftoppm"),
                  {QStringLiteral("-gray"), QStringLiteral("-singlefile"), QStringLiteral("-H"),
                   number(kInches * dotsPerInch), QStringLiteral("-r"), number(dotsPerInch),
                   file("page.pdf"), file("page")}),
              0);
    return aroundInk(QImage(file("page.pgm")));
  }

  Scratch scratch;
  Text programFolder = scratch.text();
  LocaleData locale = frenchLocale();
  Journal journal;
  RecordingShell shell{journal};
  ScriptedQuestions questions{journal};
  frmCodeBarrePrev window{{.programFolder = programFolder,
                           .locale = locale,
                           .shell = shell,
                           .questions = questions,
                           .fontPage = [] { return Text(); }},
                          [this](QPrinter& printer, bool) {
                            printer.setOutputFormat(QPrinter::PdfFormat);
                            printer.setOutputFileName(file("page.pdf"));
                            return true;
                          }};
};
