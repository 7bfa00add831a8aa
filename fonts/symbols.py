# SPDX-License-Identifier: GPL-3.0-or-later
"""What the tables of the symbologies are made of: symbols, measured in modules.

A module is the width of the narrowest bar. Heights too are whole modules, from the baseline upwards.
All fonts share TOP, so that lines of one font are as high as those of another.
"""
import dataclasses
import typing

TOP = 44  # where all bars end


@dataclasses.dataclass(frozen=True)
class Label:
    """A character in plain writing below the bars, standing on the baseline."""
    character: str
    centre: float  # from the glyph's left edge
    height: float


@dataclasses.dataclass(frozen=True)
class Symbol:
    code: int     # the code point at which an encoder asks for it
    modules: str  # from left to right, "1" for each module of a bar and "0" for each of a space
    bottom: int   # where the bars begin
    label: typing.Optional[Label] = None


def alternating(widths, first="1"):
    """The modules of bars and spaces in turn, given by their widths: "211" is "1101"."""
    other = {"1": "0", "0": "1"}
    modules, colour = "", first
    for width in widths:
        modules += colour * int(width)
        colour = other[colour]
    return modules


def narrow_and_wide(elements, first="1"):
    """The modules of bars and spaces in turn, given as "n" and "w": a wide one has three modules."""
    return alternating(["3" if element == "w" else "1" for element in elements], first)
