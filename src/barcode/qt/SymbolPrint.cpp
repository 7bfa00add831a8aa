// SPDX-License-Identifier: GPL-3.0-or-later
#include "barcode/qt/SymbolPrint.h"

#include <QPrintDialog>
#include <QPrinter>
#include <algorithm>
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
  const int line =
      static_cast<int>(std::lround(kEmptyLinePoints / kPointsPerInch * printer.resolution()));
  const double wanted = moduleWidth(points, printer.resolution());
  const auto fitting = [&](int modules, int dots) {
    return moduleThatFits(wanted, modules, dots, std::min(narrowest, wholeModule(wanted)));
  };
  const int module = std::min(fitting(symbol.size().width(), printer.width()),
                              fitting(symbol.size().height(), printer.height() - line));
  if (module == 0) return failures::barcodeTooLarge();
  printer.setDocName(QStringLiteral("Tavrollo : code barre"));
  QPainter painter;
  if (!painter.begin(&printer)) return failures::printerRefused();
  const DotCoordinates dots(painter);
  symbol.paint(painter, {0, line}, module);
  return {};
}
