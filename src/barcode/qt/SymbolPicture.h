// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QImage>

#include "barcode/PictureFile.h"
#include "barcode/qt/SymbolPainter.h"

// A symbol as a picture, black on white, of a font size in points: at 300 dots to the inch, as near
// to it as whole dots and the limits of other programs allow.

// Null when the symbol is empty or too long for a picture.
QImage symbolImage(const SymbolPainter& symbol, int points);

// The bytes of a picture file. Empty when there is no picture.
QByteArray symbolPicture(const SymbolPainter& symbol, int points, PictureFormat format);
