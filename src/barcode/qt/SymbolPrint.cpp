// SPDX-License-Identifier: GPL-3.0-or-later
#include "barcode/qt/SymbolPrint.h"

#include <QPrintDialog>
#include <QPrinter>
#include <cmath>

#include "barcode/BarcodeTexts.h"
#include "barcode/ModuleSize.h"

namespace {

constexpr double kNarrowestModuleInches = 0.006;  // finer bars are lost on paper and in scanners
constexpr double kEmptyLinePoints = 12;
constexpr double kPointsPerInch = 72;

}  // namespace

void preparePrintDialog(QPrintDialog& dialog, bool hasSelection) {
  dialog.setOption(QAbstractPrintDialog::PrintPageRange, false);
  dialog.setOption(QAbstractPrintDialog::PrintCurrentPage, false);
  dialog.setOption(QAbstractPrintDialog::PrintSelection, hasSelection);
  dialog.setPrintRange(hasSelection ? QAbstractPrintDialog::Selection
                                    : QAbstractPrintDialog::AllPages);
}

bool choosePrinter(QPrinter& printer, bool hasSelection) {
  QPrintDialog dialog(&printer);
  preparePrintDialog(dialog, hasSelection);
  return dialog.exec() == QDialog::Accepted;
}

Failure printSymbol(QPrinter& printer, const SymbolPainter& symbol, int points) {
  const int narrowest = static_cast<int>(std::ceil(kNarrowestModuleInches * printer.resolution()));
  const double wanted = moduleWidth(points, printer.resolution());
  const int module = moduleThatFits(wanted, symbol.size().width(), printer.width(),
                                    std::min(narrowest, wholeModule(wanted)));
  if (module == 0) return failures::barcodeTooLong();
  printer.setDocName(QStringLiteral("Tavrollo : code barre"));
  QPainter painter;
  if (!painter.begin(&printer)) return failures::printerRefused();
  const DotCoordinates dots(painter);
  const int line =
      static_cast<int>(std::lround(kEmptyLinePoints / kPointsPerInch * printer.resolution()));
  symbol.paint(painter, {0, line}, module);
  return {};
}
