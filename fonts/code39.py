# SPDX-License-Identifier: GPL-3.0-or-later
"""Code 39, after ISO/IEC 16388.

Each character is five bars and the four spaces between them, three of the nine wide, and a narrow
space to the next one. "*" is start and stop, and no part of the text.
"""
from symbols import Label, Symbol, narrow_and_wide

# bar, space, bar, space ...: n narrow, w wide
ELEMENTS = {
    "0": "nnnwwnwnn", "1": "wnnwnnnnw", "2": "nnwwnnnnw", "3": "wnwwnnnnn", "4": "nnnwwnnnw",
    "5": "wnnwwnnnn", "6": "nnwwwnnnn", "7": "nnnwnnwnw", "8": "wnnwnnwnn", "9": "nnwwnnwnn",
    "A": "wnnnnwnnw", "B": "nnwnnwnnw", "C": "wnwnnwnnn", "D": "nnnnwwnnw", "E": "wnnnwwnnn",
    "F": "nnwnwwnnn", "G": "nnnnnwwnw", "H": "wnnnnwwnn", "I": "nnwnnwwnn", "J": "nnnnwwwnn",
    "K": "wnnnnnnww", "L": "nnwnnnnww", "M": "wnwnnnnwn", "N": "nnnnwnnww", "O": "wnnnwnnwn",
    "P": "nnwnwnnwn", "Q": "nnnnnnwww", "R": "wnnnnnwwn", "S": "nnwnnnwwn", "T": "nnnnwnwwn",
    "U": "wwnnnnnnw", "V": "nwwnnnnnw", "W": "wwwnnnnnn", "X": "nwnnwnnnw", "Y": "wwnnwnnnn",
    "Z": "nwwnwnnnn", "-": "nwnnnnwnw", ".": "wwnnnnwnn", " ": "nwwnnnwnn", "*": "nwnnwnwnn",
    "$": "nwnwnwnnn", "/": "nwnwnnnwn", "+": "nwnnnwnwn", "%": "nnnwnwnwn",
}

LABEL_HEIGHT = 10
BOTTOM_ABOVE_LABEL = 12


def symbols(with_labels):
    for character, elements in ELEMENTS.items():
        modules = narrow_and_wide(elements)
        label = None
        if with_labels and character not in "* ":
            label = Label(character, len(modules) / 2, LABEL_HEIGHT)
        yield Symbol(code=ord(character), modules=modules + "0",
                     bottom=BOTTOM_ABOVE_LABEL if with_labels else 0, label=label)
