#!/usr/bin/env python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""Pictures of what the encoders give, set in the built fonts, are read by a decoder (zbarimg)."""
import os
import pathlib
import string
import subprocess
import tempfile
import unittest
import xml.etree.ElementTree as tree

from PIL import Image, ImageDraw, ImageFont

import built

FONT_OF_TYPE = {"1": "Code 3 de 9", "2": "Code EAN13", "3": "Code EAN13",
                "4": "Code 2 of 5 interleaved", "5": "Code 128"}
MARGIN = 40


def picture(family, text, size):
    """Black on white; the size in dots is that of the font, 48 of them are 36 points of a screen."""
    font = ImageFont.truetype(str(built.font_path(family)), size,
                              layout_engine=ImageFont.Layout.BASIC)
    width = round(font.getlength(text)) + 2 * MARGIN
    image = Image.new("L", (width, sum(font.getmetrics()) + 2 * MARGIN), 255)
    ImageDraw.Draw(image).text((MARGIN, MARGIN), text, font=font, fill=0)
    return image


def scanned(pictures):
    """What zbarimg reads in each picture: a set of (symbology, text)."""
    with tempfile.TemporaryDirectory() as folder:
        paths = []
        for number, image in enumerate(pictures):
            paths.append(os.path.join(folder, f"{number}.png"))
            image.save(paths[-1], compress_level=1)
        answer = subprocess.run(
            ["zbarimg", "--quiet", "--xml", "--set", "ean2.enable=1", "--set", "ean5.enable=1", *paths],
            stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, check=False).stdout
    found = [set() for _ in pictures]
    space = "{http://zbar.sourceforge.net/2008/barcode}"
    for source in tree.fromstring(answer).iter(space + "source"):
        number = int(pathlib.Path(source.get("href")).stem)
        for symbol in source.iter(space + "symbol"):
            found[number].add((symbol.get("type"), symbol.find(space + "data").text))
    return found


def ean_check(digits):
    total = sum(int(digit) * (3 if place % 2 == 0 else 1) for place, digit in enumerate(digits[::-1]))
    return str(-total % 10)


class FontScan(unittest.TestCase):
    def reads(self, rows, size=48, family=None):
        """Each row, (type, source, add-on, with check, what is read), is read so and not otherwise."""
        texts = built.encoded([row[:4] for row in rows])
        pictures = [picture(family or FONT_OF_TYPE[row[0]], text, size)
                    for row, text in zip(rows, texts)]
        for row, found in zip(rows, scanned(pictures), strict=True):
            self.assertEqual(row[4], found, row[:4])

    def test_code_39(self):
        rows = [("1", text, "", False, {("CODE-39", text)})
                for text in ("0123456789", string.ascii_uppercase, "AB-12", "A.B C-D/1", "$1+2%3 -4")]
        for family in "Code 3 de 9", "Code 3 de 9 Lab":
            self.reads(rows, family=family)

    def test_ean_13(self):
        rows = []
        for first in range(10):
            digits = f"{first}{(first * 111_111 + 123_456) % 1_000_000:06}{first * 9_876 + 1:05}"
            rows.append(("2", digits, "", False, {("EAN-13", digits + ean_check(digits))}))
        self.reads(rows)

    def test_ean_13_with_an_add_on(self):
        digits = "978020137962"
        main = ("EAN-13", digits + ean_check(digits))
        rows = [("2", digits, add_on, False, {main, ("EAN-2", add_on)})
                for add_on in ("00", "13", "26", "39", "45", "58", "67", "99")]
        rows += [("2", digits, add_on, False, {main, ("EAN-5", add_on)})
                 for add_on in ("51999", "52495", "00000", "12345", "67890", "90000")]
        self.reads(rows)

    def test_ean_8(self):
        rows = []
        for digits in ("1234567", "9638507", "0000000", "7654321", "8899001", "5432109"):
            rows.append(("3", digits, "", False, {("EAN-8", digits + ean_check(digits))}))
        self.reads(rows)

    def test_interleaved_2_of_5(self):
        pairs = [f"{value:02}" for value in range(100)]
        sources = ["".join(pairs[i::10]) for i in range(10)]
        rows = [("4", source, "", False, {("I2/5", source)}) for source in sources]
        rows += [("4", "1234567", "", True, {("I2/5", "1234567" + ean_check("1234567"))}),
                 ("4", "1234567", "", False, {("I2/5", "01234567")})]
        self.reads(rows)

    def test_code_128(self):
        printable = "".join(map(chr, range(32, 127)))
        rows = [("5", text, "", False, {("CODE-128", text)})
                for text in [printable[i:i + 19] for i in range(0, 95, 19)]
                + ["".join(f"{value:02}" for value in range(i, 100, 10)) for i in range(10)]
                + ["Tavrollo", "A12345B", "AB1234", "12345", "1234A5678"]]
        self.reads(rows)

    def test_at_other_sizes(self):
        rows = [("1", "AB-12", "", False, {("CODE-39", "AB-12")}),
                ("2", "978020137962", "12", False, {("EAN-13", "9780201379624"), ("EAN-2", "12")}),
                ("3", "9638507", "", False, {("EAN-8", "96385074")}),
                ("4", "12345670", "", False, {("I2/5", "12345670")}),
                ("5", "Tavrollo 2024", "", False, {("CODE-128", "Tavrollo 2024")})]
        for size in 72, 96, 150, 200:
            with self.subTest(size=size):
                self.reads(rows, size)


if __name__ == "__main__":
    built.run()
