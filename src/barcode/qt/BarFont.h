// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QPainterPath>
#include <QRawFont>
#include <QRect>
#include <map>
#include <vector>

#include "text/Text.h"

// One of the barcode fonts that are built into the program, measured in modules: what its glyphs
// look like is read from their outlines, so that whatever is painted shows what the font shows.
class BarFont {
 public:
  // Places are in modules, from the left end of the baseline, downwards.
  struct Glyph {
    int advance = 0;
    std::vector<QRect> bars;  // from left to right
    QPainterPath label;       // what stands below the bars in plain writing
  };

  explicit BarFont(TextView family);

  // False when the program was built without its fonts, or without this one.
  bool isThere() const { return font_.isValid(); }
  const Text& family() const { return family_; }

  // Above and below the baseline.
  int ascent() const { return ascent_; }
  int height() const { return height_; }

  // True when the font has a glyph for each character of `text`.
  bool canShow(TextView text) const;

  // An empty one where the font has none.
  const Glyph& glyph(char16_t character) const;

  // How far all glyphs of `text` advance.
  int width(TextView text) const;

 private:
  Glyph readGlyph(char16_t character) const;

  Text family_;
  QRawFont font_;
  double unitsPerModule_ = 1;
  int ascent_ = 0;
  int height_ = 0;
  mutable std::map<char16_t, Glyph> glyphs_;  // those that were asked for
};
