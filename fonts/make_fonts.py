#!/usr/bin/env python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""Builds the barcode fonts from the tables of their symbologies.

usage: make_fonts.py FOLDER

Writes one TrueType font for each row of FONTS into the folder, the same bytes each time. The bars stand
on whole modules; a module is 1/24 of the font's size: at 36 points 0.53 mm, and on a screen of 96 dots
to the inch exactly two dots. An EAN has its nominal size at 22.5 points and may be printed from 18 to 45
points, which are 80 % and 200 %. There are no hints, no kerning and no substitutions: none may move a
bar.
"""
import pathlib
import re
import sys

from fontTools import agl
from fontTools.fontBuilder import FontBuilder
from fontTools.pens.ttGlyphPen import TTGlyphPen
from fontTools.ttLib import newTable
from fontTools.ttLib.tables.O_S_2f_2 import Panose
from fontTools.ttLib.tables._g_l_y_f import flagOverlapSimple

import code128
import code39
import ean
import interleaved2of5
import lettering
from symbols import TOP

FONTS = {
    "Code 3 de 9": lambda: code39.symbols(with_labels=False),
    "Code 3 de 9 Lab": lambda: code39.symbols(with_labels=True),
    "Code EAN13": ean.symbols,
    "Code 2 of 5 interleaved": interleaved2of5.symbols,
    "Code 128": code128.symbols,
}

UNITS = 80  # to a module
EM = 24     # modules
ASCENT = TOP + 2
DESCENT = 4

VERSION = "1.000"
TIMESTAMP = 3850070400  # the first of January 2026, in seconds since 1904
COPYRIGHT = "Copyright 2026 the Tavrollo authors"
LICENCE = (
    "This font is free software: you can redistribute it and/or modify it under the terms of the GNU "
    "General Public License as published by the Free Software Foundation, either version 3 of the "
    "License, or (at your option) any later version. As a special exception, if you create a document "
    "which uses this font, and embed this font or unaltered portions of this font into the document, "
    "this font does not by itself cause the resulting document to be covered by the GNU General Public "
    "License. This exception does not however invalidate any other reasons why the document might be "
    "covered by the GNU General Public License. If you modify this font, you may extend this exception "
    "to your version of the font, but you are not obligated to do so. If you do not wish to do so, "
    "delete this exception statement from your version.")
LICENCE_ADDRESS = "https://www.gnu.org/licenses/gpl-3.0.html"

# A document that calls the font one of symbols has its characters in this private range instead.
SYMBOL_FONT_RANGE = 0xF000


def file_name(family):
    return family.replace(" ", "") + ".ttf"


def draw_contour(pen, points):
    """A closed outline; its points, which are modules, become whole units, none twice in a row."""
    rounded = [(round(x * UNITS), round(y * UNITS)) for x, y in points]
    kept = [point for point, before in zip(rounded, rounded[-1:] + rounded) if point != before]
    pen.moveTo(kept[0])
    for point in kept[1:]:
        pen.lineTo(point)
    pen.closePath()


def draw_box(pen, left, bottom, right, top):
    draw_contour(pen, [(left, bottom), (left, top), (right, top), (right, bottom)])


def draw_bars(pen, symbol):
    for bar in re.finditer("1+", symbol.modules):
        draw_box(pen, bar.start(), symbol.bottom, bar.end(), TOP)


def draw_label(pen, label):
    scale = label.height / lettering.HEIGHT
    left = label.centre - scale * lettering.WIDTH / 2
    pen_half = lettering.PEN / 2
    for contour in lettering.outlines(label.character):
        draw_contour(pen, [(left + scale * (x + pen_half), scale * (y + pen_half))
                           for x, y in contour])


def symbol_glyph(symbol):
    pen = TTGlyphPen(None)
    draw_bars(pen, symbol)
    if symbol.label:
        draw_label(pen, symbol.label)
    glyph = pen.glyph()
    if symbol.label:
        glyph.flags[0] |= flagOverlapSimple  # the pen's strokes cross each other
    return glyph


def missing_glyph():
    """An empty frame, that nobody takes for bars."""
    pen = TTGlyphPen(None)
    draw_box(pen, 1, 0, 15, 20)
    draw_contour(pen, [(2, 1), (14, 1), (14, 19), (2, 19)])
    return pen.glyph(), 16 * UNITS


def glyph_name(code):
    """The name that stands for the character everywhere, so that text copied out of a PDF is right."""
    return agl.UV2AGL[code]


def build(family, symbols):
    symbols = sorted(symbols, key=lambda symbol: symbol.code)
    missing, missing_advance = missing_glyph()
    glyphs = {".notdef": missing}
    advances = {".notdef": missing_advance}
    characters = {}
    for symbol in symbols:
        name = glyph_name(symbol.code)
        glyphs[name] = symbol_glyph(symbol)
        advances[name] = len(symbol.modules) * UNITS
        characters[symbol.code] = name
        characters[SYMBOL_FONT_RANGE + symbol.code] = name

    builder = FontBuilder(EM * UNITS, isTTF=True)
    builder.font.recalcTimestamp = False
    builder.updateHead(created=TIMESTAMP, modified=TIMESTAMP, fontRevision=float(VERSION),
                       lowestRecPPEM=EM)
    builder.setupGlyphOrder(list(glyphs))
    builder.setupCharacterMap(characters)
    builder.setupGlyf(glyphs)
    builder.setupHorizontalMetrics({name: (advance, builder.font["glyf"][name].xMin)
                                    for name, advance in advances.items()})
    builder.setupHorizontalHeader(ascent=ASCENT * UNITS, descent=-DESCENT * UNITS)
    builder.setupNameTable(names(family))
    setup_os2(builder)
    builder.setupPost(underlinePosition=-3 * UNITS, underlineThickness=UNITS)
    setup_smoothing(builder.font)
    return builder.font


def names(family):
    postscript = family.replace(" ", "")
    return {
        "copyright": COPYRIGHT,
        "familyName": family,
        "styleName": "Regular",
        "uniqueFontIdentifier": f"{VERSION};Tavrollo;{postscript}-Regular",
        "fullName": family,
        "version": f"Version {VERSION}",
        "psName": f"{postscript}-Regular",
        "manufacturer": "Tavrollo",
        "designer": "the Tavrollo authors",
        "licenseDescription": LICENCE,
        "licenseInfoURL": LICENCE_ADDRESS,
    }


def panose_of_pictures():
    panose = Panose()
    for name in ("bSerifStyle", "bWeight", "bProportion", "bContrast", "bStrokeVariation", "bArmStyle",
                 "bLetterForm", "bMidline", "bXHeight"):
        setattr(panose, name, 0)
    panose.bFamilyType = 5
    return panose


def setup_os2(builder):
    regular, typo_metrics = 1 << 6, 1 << 7
    western, symbols = 1 << 0, 1 << 31
    builder.setupOS2(
        version=4, fsType=0, fsSelection=regular | typo_metrics, usWeightClass=400, usWidthClass=5,
        sTypoAscender=ASCENT * UNITS, sTypoDescender=-DESCENT * UNITS, sTypoLineGap=0,
        usWinAscent=ASCENT * UNITS, usWinDescent=DESCENT * UNITS,
        sCapHeight=TOP * UNITS, sxHeight=TOP * UNITS, achVendID="TVRL",
        ulCodePageRange1=western | symbols, ulCodePageRange2=0,
        panose=panose_of_pictures())
    table = builder.font["OS/2"]
    table.recalcUnicodeRanges(builder.font)
    table.recalcAvgCharWidth(builder.font)


def setup_smoothing(font):
    """Grey edges in both directions at all sizes: where a module is no whole dot, grey keeps it true."""
    symmetric_smoothing, grey = 8, 2
    font["gasp"] = newTable("gasp")
    font["gasp"].version = 1
    font["gasp"].gaspRange = {0xFFFF: symmetric_smoothing | grey}


def main(arguments):
    if len(arguments) != 1:
        print(__doc__, file=sys.stderr)
        return 2
    folder = pathlib.Path(arguments[0])
    folder.mkdir(parents=True, exist_ok=True)
    for family, symbols in FONTS.items():
        build(family, symbols()).save(folder / file_name(family))
    return 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
