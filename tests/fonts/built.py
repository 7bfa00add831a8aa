# SPDX-License-Identifier: GPL-3.0-or-later
"""What the tests of the fonts share: the fonts of the build folder, and the encoders."""
import pathlib
import subprocess
import sys
import unittest

from fontTools.ttLib import TTFont

FAMILIES = {
    "Code 3 de 9": "Code3de9.ttf",
    "Code 3 de 9 Lab": "Code3de9Lab.ttf",
    "Code EAN13": "CodeEAN13.ttf",
    "Code 2 of 5 interleaved": "Code2of5interleaved.ttf",
    "Code 128": "Code128.ttf",
}

MODULES_IN_EM = 24

# Every code point that the encoders may ask a family for.
CODE_39 = " $%+-./0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZ*"
EMITTED = {
    "Code 3 de 9": CODE_39,
    "Code 3 de 9 Lab": CODE_39,
    "Code EAN13": "0123456789ABCDEFGHIJKLMNOPQRSTabcdefghij:*+[\\",
    "Code 2 of 5 interleaved": "".join(map(chr, [*range(33, 127), *range(195, 203)])),
    "Code 128": "".join(map(chr, [*range(32, 127), *range(195, 207)])),
}

build = pathlib.Path(".")


def run():
    """Runs the tests of the calling script on the folder behind --build."""
    global build
    place = sys.argv.index("--build")
    build = pathlib.Path(sys.argv[place + 1])
    unittest.main(module="__main__", argv=sys.argv[:place] + sys.argv[place + 2:])


def font_path(family):
    return build / "fonts" / FAMILIES[family]


def font(family):
    return TTFont(font_path(family))


def encoded(lines):
    """What the encoders make of (type, source, add-on, with check)."""
    given = "".join("\t".join([kind, source, add_on, "1" if check else "0"]) + "\n"
                    for kind, source, add_on, check in lines)
    answer = subprocess.run([build / "tavrolloctl", "codebar", "--batch"], input=given.encode(),
                            stdout=subprocess.PIPE, check=True).stdout.decode()
    return answer.split("\n")[:-1]


class Glyph:
    """A character's outline, in modules."""

    def __init__(self, ttfont, character):
        name = ttfont.getBestCmap()[ord(character)]
        unit = ttfont["head"].unitsPerEm // MODULES_IN_EM
        glyph = ttfont["glyf"][name]
        self.advance = ttfont["hmtx"][name][0] / unit
        self.contours = []
        if glyph.numberOfContours > 0:
            points, ends, _ = glyph.getCoordinates(ttfont["glyf"])
            begin = 0
            for end in ends:
                self.contours.append([(x / unit, y / unit) for x, y in points[begin:end + 1]])
                begin = end + 1

    def ink_at(self, height):
        """The ink that a line at this height meets, as (left, right), from left to right."""
        crossings = []
        for contour in self.contours:
            for (x1, y1), (x2, y2) in zip(contour, contour[1:] + contour[:1]):
                if (y1 > height) != (y2 > height):
                    x = x1 + (height - y1) * (x2 - x1) / (y2 - y1)
                    crossings.append((x, 1 if y2 > y1 else -1))
        ink, winding = [], 0
        for x, turn in sorted(crossings):
            if winding == 0:
                ink.append([x, x])
            winding += turn
            ink[-1][1] = x
        return [tuple(piece) for piece in ink]

    def modules_at(self, height):
        """The bars at this height, module for module: "1" is ink. "?" where an edge is between."""
        modules = ["0"] * round(self.advance)
        for left, right in self.ink_at(height):
            if left != round(left) or right != round(right) or left < 0 or right > self.advance:
                return "?"
            for module in range(round(left), round(right)):
                modules[module] = "1"
        return "".join(modules)

    def bounds(self):
        xs = [x for contour in self.contours for x, _ in contour]
        ys = [y for contour in self.contours for _, y in contour]
        return min(xs), min(ys), max(xs), max(ys)
