// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "barcode/qt/SymbolPainter.h"
#include "platform/Failure.h"

class QPrinter;
class QPrintDialog;

// Makes `dialog` one for symbols: no page numbers, and the selection where there is one.
void preparePrintDialog(QPrintDialog& dialog, bool hasSelection);

// The print dialog. False when the user cancels it. Qt does this on every system: on Windows its
// dialog is the system's own.
bool choosePrinter(QPrinter& printer, bool hasSelection);

// Prints one page: an empty line, and below it `symbol` at a font size of `points`, or as large as
// the page has room for it whole. Nothing is printed when it fails.
Failure printSymbol(QPrinter& printer, const SymbolPainter& symbol, int points);
