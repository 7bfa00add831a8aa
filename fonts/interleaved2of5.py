# SPDX-License-Identifier: GPL-3.0-or-later
"""Interleaved 2 of 5, after ISO/IEC 16390.

A pair of digits is five bars, the first digit, and the five spaces between and behind them, the second
digit. Two of each five are wide. The light margins are part of start and stop.
"""
from symbols import Symbol, narrow_and_wide

DIGITS = ["nnwwn", "wnnnw", "nwnnw", "wwnnn", "nnwnw",
          "wnwnn", "nwwnn", "nnnww", "wnnwn", "nwnwn"]
START = "nnnn"
STOP = "wnn"

START_CODE = 201
STOP_CODE = 202
MARGIN = "0" * 10


def pair_code(value):
    """The code point of the pair 00 to 99: what ASCII has no room for stands from 195 on."""
    return value + 33 if value < 94 else value + 101


def symbols():
    for value in range(100):
        bars, spaces = DIGITS[value // 10], DIGITS[value % 10]
        elements = "".join(bar + space for bar, space in zip(bars, spaces))
        yield Symbol(code=pair_code(value), modules=narrow_and_wide(elements), bottom=0)
    yield Symbol(code=START_CODE, modules=MARGIN + narrow_and_wide(START), bottom=0)
    yield Symbol(code=STOP_CODE, modules=narrow_and_wide(STOP) + MARGIN, bottom=0)
    # No symbol: every font has a blank, at which word processors break lines.
    yield Symbol(code=ord(" "), modules=MARGIN, bottom=0)
