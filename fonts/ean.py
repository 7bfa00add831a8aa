# SPDX-License-Identifier: GPL-3.0-or-later
"""EAN-13, EAN-8 and their add-ons of 2 and 5 digits, after ISO/IEC 15420.

A digit has seven modules. In the left half it stands in set A or B, in the right half in set C; the
first digit of an EAN-13 has no bars and is told by the sets of the others: its glyph is the digit in
plain writing, in the light margin, and the start guard.

The guards reach five modules further down, between the digits in plain writing. The digits of an
add-on are the same characters as those of the left half, so they too are written below their bars.
"""
from symbols import Label, Symbol

SET_A = ["0001101", "0011001", "0010011", "0111101", "0100011",
         "0110001", "0101111", "0111011", "0110111", "0001011"]
SET_C = [modules.translate(str.maketrans("01", "10")) for modules in SET_A]
SET_B = [modules[::-1] for modules in SET_C]

GUARD = "101"
CENTRE_GUARD = "01010"
ADD_ON_GUARD = "1011"
ADD_ON_SEPARATOR = "01"

# Light margins, in modules. Between a symbol and its add-on there are 7 to 12.
MARGIN_LEFT_13 = "0" * 11
MARGIN_LEFT_8 = "0" * 7
MARGIN_RIGHT = "0" * 7
MORE_MARGIN_BEFORE_ADD_ON = "0" * 2

LABEL_HEIGHT = 8
BOTTOM = 9
BOTTOM_OF_GUARDS = BOTTOM - 5


def symbols():
    for digit in range(10):
        label = str(digit)
        yield Symbol(code=ord("0") + digit, modules=MARGIN_LEFT_13 + GUARD, bottom=BOTTOM_OF_GUARDS,
                     label=Label(label, 3.5, LABEL_HEIGHT))
        for first, modules in ("A", SET_A), ("K", SET_B), ("a", SET_C):
            yield Symbol(code=ord(first) + digit, modules=modules[digit], bottom=BOTTOM,
                         label=Label(label, 3.5, LABEL_HEIGHT))
    yield Symbol(code=ord(":"), modules=MARGIN_LEFT_8 + GUARD, bottom=BOTTOM_OF_GUARDS)
    yield Symbol(code=ord("*"), modules=CENTRE_GUARD, bottom=BOTTOM_OF_GUARDS)
    yield Symbol(code=ord("+"), modules=GUARD + MARGIN_RIGHT, bottom=BOTTOM_OF_GUARDS)
    yield Symbol(code=ord("["), modules=MORE_MARGIN_BEFORE_ADD_ON + ADD_ON_GUARD, bottom=BOTTOM)
    yield Symbol(code=ord("\\"), modules=ADD_ON_SEPARATOR, bottom=BOTTOM)
    # No symbol: every font has a blank, at which word processors break lines.
    yield Symbol(code=ord(" "), modules="0" * 7, bottom=BOTTOM)
