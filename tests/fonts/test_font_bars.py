#!/usr/bin/env python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""The bars of every glyph, read back from its outline and compared with the symbologies' own rules.

The patterns here are written in another notation than those that the fonts are built from.
"""
import unittest

import built

MIDDLE = 30.5  # a height at which every symbol has all its bars
TOP = 44


def wide_and_narrow(bars, spaces):
    """Modules of a symbol whose bars and spaces are told apart: "1" is wide, three modules."""
    modules = ""
    for i, bar in enumerate(bars):
        modules += "111" if bar == "1" else "1"
        if i < len(spaces):
            modules += "000" if spaces[i] == "1" else "0"
    return modules


def code_39_patterns():
    """Ten characters share the bars of a group; the group says which space is wide. Four have none but
    narrow bars."""
    bars = {1: "10001", 2: "01001", 3: "11000", 4: "00101", 5: "10100",
            6: "01100", 7: "00011", 8: "10010", 9: "01010", 10: "00110"}
    groups = {"0100": "1234567890", "0010": "ABCDEFGHIJ", "0001": "KLMNOPQRST", "1000": "UVWXYZ-. *"}
    patterns = {character: wide_and_narrow(bars[place], spaces)
                for spaces, group in groups.items() for place, character in enumerate(group, 1)}
    for character, spaces in {"$": "1110", "/": "1101", "+": "1011", "%": "0111"}.items():
        patterns[character] = wide_and_narrow("00000", spaces)
    return patterns


# Widths of space, bar, space, bar in set A; of bar, space, bar, space in set C; set B is set C reversed.
EAN_WIDTHS = ["3211", "2221", "2122", "1411", "1132", "1231", "1114", "1312", "1213", "3112"]


def from_widths(widths, first):
    return "".join((first if i % 2 == 0 else str(1 - int(first))) * int(width)
                   for i, width in enumerate(widths))


# The weights 1, 2, 4, 7 and parity of the wide elements of a digit.
TWO_OF_FIVE_WEIGHTS = {0: "4 7", 1: "1 P", 2: "2 P", 3: "1 2", 4: "4 P",
                       5: "1 4", 6: "2 4", 7: "7 P", 8: "1 7", 9: "2 7"}


def two_of_five(digit):
    return "".join("1" if weight in TWO_OF_FIVE_WEIGHTS[digit] else "0" for weight in "1247P")


CODE_128 = """
11011001100 11001101100 11001100110 10010011000 10010001100 10001001100 10011001000 10011000100
10001100100 11001001000 11001000100 11000100100 10110011100 10011011100 10011001110 10111001100
10011101100 10011100110 11001110010 11001011100 11001001110 11011100100 11001110100 11101101110
11101001100 11100101100 11100100110 11101100100 11100110100 11100110010 11011011000 11011000110
11000110110 10100011000 10001011000 10001000110 10110001000 10001101000 10001100010 11010001000
11000101000 11000100010 10110111000 10110001110 10001101110 10111011000 10111000110 10001110110
11101110110 11010001110 11000101110 11011101000 11011100010 11011101110 11101011000 11101000110
11100010110 11101101000 11101100010 11100011010 11101111010 11001000010 11110001010 10100110000
10100001100 10010110000 10010000110 10000101100 10000100110 10110010000 10110000100 10011010000
10011000010 10000110100 10000110010 11000010010 11001010000 11110111010 11000010100 10001111010
10100111100 10010111100 10010011110 10111100100 10011110100 10011110010 11110100100 11110010100
11110010010 11011011110 11011110110 11110110110 10101111000 10100011110 10001011110 10111101000
10111100010 11110101000 11110100010 10111011110 10111101110 11101011110 11110101110 11010000100
11010010000 11010011100 1100011101011
""".split()


class FontBars(unittest.TestCase):
    def compare(self, family, patterns):
        font = built.font(family)
        for character, modules in patterns.items():
            glyph = built.Glyph(font, character)
            self.assertEqual(modules, glyph.modules_at(MIDDLE), (family, character))

    def test_code_39(self):
        patterns = code_39_patterns()
        self.assertEqual(set(built.CODE_39), set(patterns))
        for family in "Code 3 de 9", "Code 3 de 9 Lab":
            # A narrow space follows each character.
            self.compare(family, {character: modules + "0" for character, modules in patterns.items()})

    def test_ean_digits(self):
        patterns = {}
        for digit, widths in enumerate(EAN_WIDTHS):
            patterns[chr(ord("A") + digit)] = from_widths(widths, "0")
            patterns[chr(ord("K") + digit)] = from_widths(widths[::-1], "0")
            patterns[chr(ord("a") + digit)] = from_widths(widths, "1")
        self.compare("Code EAN13", patterns)

    def test_ean_guards_and_light_margins(self):
        font = built.font("Code EAN13")
        def modules(character):
            return built.Glyph(font, character).modules_at(MIDDLE)
        for first_digit in "0123456789":
            self.assertEqual("0" * 11 + "101", modules(first_digit))
        self.assertEqual("0" * 7 + "101", modules(":"))
        self.assertEqual("01010", modules("*"))
        self.assertEqual("101" + "0" * 7, modules("+"))
        self.assertEqual("01", modules("\\"))
        self.assertTrue(modules("[").endswith("01011"))
        between = len(modules("+")) - 3 + modules("[").index("1")
        self.assertTrue(7 <= between <= 12, between)

    def test_interleaved_2_of_5(self):
        patterns = {}
        for value in range(100):
            code = 33 + value if value < 94 else 195 + value - 94
            first, second = divmod(value, 10)
            patterns[chr(code)] = wide_and_narrow(two_of_five(first), two_of_five(second))
        patterns[chr(201)] = "0" * 10 + "1010"
        patterns[chr(202)] = "11101" + "0" * 10
        self.assertEqual(set(built.EMITTED["Code 2 of 5 interleaved"]), set(patterns))
        self.compare("Code 2 of 5 interleaved", patterns)

    def test_code_128(self):
        patterns = {}
        for value, modules in enumerate(CODE_128):
            if value in (103, 104, 105):
                modules = "0" * 10 + modules
            if value == 106:
                modules = modules + "0" * 10
            patterns[chr(32 + value if value < 95 else 195 + value - 95)] = modules
        self.assertEqual(set(built.EMITTED["Code 128"]), set(patterns))
        self.compare("Code 128", patterns)

    def test_bars_are_whole_and_upright(self):
        for family in built.FAMILIES:
            font = built.font(family)
            for character in built.EMITTED[family]:
                with self.subTest(family=family, character=character):
                    glyph = built.Glyph(font, character)
                    self.assertEqual(glyph.advance, round(glyph.advance))
                    bars = [contour for contour in glyph.contours if max(y for _, y in contour) == TOP]
                    self.assertEqual(len(glyph.ink_at(MIDDLE)), len(bars))
                    for bar in bars:
                        self.assertEqual(4, len(bar))
                        self.assertEqual((2, 2), (len({x for x, _ in bar}), len({y for _, y in bar})))
                        self.assertTrue(all(x == round(x) and y == round(y) for x, y in bar))
                    self.assertEqual(1, len({min(y for _, y in bar) for bar in bars}))

    def test_no_bar_touches_its_neighbours(self):
        for family in built.FAMILIES:
            font = built.font(family)
            for character in built.EMITTED[family]:
                modules = built.Glyph(font, character).modules_at(MIDDLE)
                self.assertIn("0", modules[0] + modules[-1], (family, character))


class FontLabels(unittest.TestCase):
    def bottom_of_bars(self, glyph):
        return min(y for contour in glyph.contours if max(y for _, y in contour) == TOP
                   for _, y in contour)

    def label(self, font, character):
        """The outlines below the bars, moved to the left edge."""
        contours = [contour for contour in built.Glyph(font, character).contours
                    if max(y for _, y in contour) < TOP]
        left = min((x for contour in contours for x, _ in contour), default=0)
        return [[(round(x - left, 2), round(y, 2)) for x, y in contour] for contour in contours]

    def test_ean_digits_stand_below_their_bars(self):
        font = built.font("Code EAN13")
        for digit in range(10):
            labels = [self.label(font, chr(ord(first) + digit)) for first in "0AKa"]
            self.assertTrue(labels[0])
            for label in labels[1:]:
                self.assertEqual(labels[0], label, digit)
            for first in "AKa":
                glyph = built.Glyph(font, chr(ord(first) + digit))
                top = max(y for contour in glyph.contours for _, y in contour if y != TOP
                          and max(y for _, y in contour) < TOP)
                self.assertGreater(self.bottom_of_bars(glyph), top)

    def test_ean_guards_reach_down_between_the_digits(self):
        font = built.font("Code EAN13")
        bars = self.bottom_of_bars(built.Glyph(font, "A"))
        for guard in "0:*+":
            self.assertEqual(bars - 5, self.bottom_of_bars(built.Glyph(font, guard)), guard)
        # Those of the add-on end with its digits' bars.
        for guard in "[\\":
            self.assertEqual(bars, self.bottom_of_bars(built.Glyph(font, guard)), guard)

    def test_the_first_digit_leaves_the_guard_its_light_margin(self):
        font = built.font("Code EAN13")
        for digit in "0123456789":
            ink = [x for contour in built.Glyph(font, digit).contours for x, _ in contour if x < 11]
            self.assertTrue(ink)
            self.assertGreaterEqual(min(ink), 0)
            self.assertLessEqual(max(ink), 6)

    def test_code_39_lab_writes_each_character_but_start_and_stop(self):
        font = built.font("Code 3 de 9 Lab")
        seen = []
        for character in built.CODE_39:
            label = self.label(font, character)
            self.assertEqual(character in "* ", not label, character)
            self.assertNotIn(label if label else None, seen, character)
            seen.append(label)

    def test_code_39_has_no_writing(self):
        for family in "Code 3 de 9", "Code 128", "Code 2 of 5 interleaved":
            font = built.font(family)
            for character in built.EMITTED[family]:
                self.assertEqual([], self.label(font, character), (family, character))

    def test_writing_stays_within_its_glyph(self):
        for family in "Code 3 de 9 Lab", "Code EAN13":
            font = built.font(family)
            for character in built.EMITTED[family]:
                glyph = built.Glyph(font, character)
                left, _, right, top = glyph.bounds()
                self.assertTrue(left >= 0 and right <= glyph.advance and top == TOP, character)


if __name__ == "__main__":
    built.run()
