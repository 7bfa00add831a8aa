#!/usr/bin/env python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""The tables of the built fonts: names, licence, metrics, characters, and what must not be in them."""
import pathlib
import random
import subprocess
import tempfile
import unittest

import built

GENERATOR = pathlib.Path(__file__).parents[2] / "fonts" / "make_fonts.py"


class FontTables(unittest.TestCase):
    def each(self):
        for family in built.FAMILIES:
            with self.subTest(family=family):
                yield family, built.font(family)

    def test_names_copyright_and_licence(self):
        for family, font in self.each():
            names = {record.nameID: record.toUnicode() for record in font["name"].names}
            self.assertEqual(family, names[1])
            self.assertEqual("Regular", names[2])
            self.assertEqual(family, names[4])
            self.assertRegex(names[5], r"^Version \d+\.\d+$")
            self.assertEqual(family.replace(" ", "") + "-Regular", names[6])
            self.assertIn("the Tavrollo authors", names[0])
            self.assertIn("GNU General Public License", names[13])
            self.assertIn("either version 3 of the License, or (at your option) any later", names[13])
            self.assertIn("As a special exception, if you create a document which uses this font, and "
                          "embed this font or unaltered portions of this font into the document",
                          names[13])
            self.assertEqual("https://www.gnu.org/licenses/gpl-3.0.html", names[14])
            identifiers = {built.font(other)["name"].getDebugName(3) for other in built.FAMILIES}
            self.assertEqual(len(built.FAMILIES), len(identifiers))

    def test_a_document_may_embed_them(self):
        for _, font in self.each():
            self.assertEqual(0, font["OS/2"].fsType)

    def test_nothing_in_them_moves_a_bar(self):
        for _, font in self.each():
            self.assertEqual(set(), set(font.keys()) & {
                "kern", "kerx", "GSUB", "GPOS", "GDEF", "morx", "mort", "fpgm", "prep", "cvt ", "cvar",
                "hdmx", "VDMX", "LTSH", "fvar"})
            for name in font.getGlyphOrder():
                glyph = font["glyf"][name]
                if glyph.numberOfContours > 0:
                    self.assertEqual([], list(glyph.program.getBytecode()), name)
                self.assertFalse(glyph.isComposite(), name)

    def test_every_character_of_the_encoders_is_there_at_its_own_code_point(self):
        for family, font in self.each():
            unicode_map = font.getBestCmap()
            for character in built.EMITTED[family]:
                self.assertIn(ord(character), unicode_map)
            names = [unicode_map[ord(character)] for character in built.EMITTED[family]]
            self.assertEqual(len(names), len(set(names)), "one glyph for each symbol")

    def test_lines_break_at_a_blank_that_shows_nothing_where_it_is_no_symbol(self):
        for family, font in self.each():
            self.assertEqual(ord(" "), font["OS/2"].usBreakChar)
            blank = font["glyf"][font.getBestCmap()[ord(" ")]]
            self.assertEqual(" " in built.EMITTED[family], blank.numberOfContours > 0)

    def test_a_document_that_calls_them_fonts_of_symbols_finds_the_same(self):
        for family, font in self.each():
            unicode_map = font.getBestCmap()
            for character in built.EMITTED[family]:
                self.assertEqual(unicode_map[ord(character)], unicode_map[0xF000 + ord(character)])
            self.assertTrue(font["OS/2"].ulCodePageRange1 >> 31 & 1)
            self.assertTrue(font["OS/2"].ulCodePageRange1 & 1)

    def test_what_the_encoders_give_for_chance_texts_is_there(self):
        chance = random.Random(1)
        families = {"1": "Code 3 de 9 Lab", "2": "Code EAN13", "3": "Code EAN13",
                    "4": "Code 2 of 5 interleaved", "5": "Code 128"}
        def text(characters, longest):
            return "".join(chance.choices(characters, k=chance.randint(1, longest)))
        lines = []
        for _ in range(400):
            lines.append(("1", text(built.CODE_39.replace("*", ""), 20), "", False))
            lines.append(("2", text("0123456789", 17), text("0123456789", 5), False))
            lines.append(("3", text("0123456789", 12), text("0123456789", 5), False))
            lines.append(("4", text("0123456789", 20), "", chance.random() < 0.5))
            lines.append(("5", text([*map(chr, range(32, 127)), *"0123456789" * 9, "Æ"], 20), "", False))
        maps = {family: built.font(family).getBestCmap() for family in built.FAMILIES}
        for (kind, source, *_), result in zip(lines, built.encoded(lines), strict=True):
            self.assertNotEqual("", result, (kind, source))
            self.assertLessEqual(set(map(ord, result)), set(maps[families[kind]]))
            self.assertLessEqual(set(result), set(built.EMITTED[families[kind]]))

    def test_lines_do_not_overlap(self):
        for _, font in self.each():
            os2, hhea, head = font["OS/2"], font["hhea"], font["head"]
            self.assertLessEqual(head.yMax, hhea.ascent)
            self.assertGreaterEqual(head.yMin, hhea.descent)
            self.assertEqual((hhea.ascent, hhea.descent, 0),
                             (os2.sTypoAscender, os2.sTypoDescender, os2.sTypoLineGap))
            self.assertEqual((hhea.ascent, -hhea.descent), (os2.usWinAscent, os2.usWinDescent))
            self.assertEqual(0, hhea.lineGap)

    def test_all_have_lines_of_one_height(self):
        heights = {(font["hhea"].ascent, font["hhea"].descent, font["head"].unitsPerEm)
                   for _, font in self.each()}
        self.assertEqual(1, len(heights))

    def test_the_header_is_that_of_a_regular_font(self):
        for _, font in self.each():
            self.assertEqual(0x5F0F3CF5, font["head"].magicNumber)
            self.assertEqual(0, font["head"].macStyle)
            self.assertEqual(0, font["head"].unitsPerEm % built.MODULES_IN_EM)
            self.assertEqual(1 << 6, font["OS/2"].fsSelection & 0b1100001)
            self.assertEqual(400, font["OS/2"].usWeightClass)
            self.assertEqual(0.0, font["post"].italicAngle)

    def test_they_are_the_same_bytes_each_time(self):
        with tempfile.TemporaryDirectory() as folder:
            subprocess.run(["/usr/bin/python3", "-B", GENERATOR, folder], check=True)
            self.assertEqual(sorted(built.FAMILIES.values()),
                             sorted(path.name for path in pathlib.Path(folder).iterdir()))
            for family, name in built.FAMILIES.items():
                self.assertEqual(pathlib.Path(folder, name).read_bytes(),
                                 built.font_path(family).read_bytes(), family)


if __name__ == "__main__":
    built.run()
