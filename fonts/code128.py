# SPDX-License-Identifier: GPL-3.0-or-later
"""Code 128, after ISO/IEC 15417.

A character has eleven modules in three bars and three spaces; stop has one bar more. The light margins
are part of start and stop.
"""
from symbols import Symbol, alternating

# The widths of bar, space, bar, space ... for the values 0 to 106; the last one is stop.
WIDTHS = """
    212222 222122 222221 121223 121322 131222 122213 122312 132212 221213
    221312 231212 112232 122132 122231 113222 123122 123221 223211 221132
    221231 213212 223112 312131 311222 321122 321221 312212 322112 322211
    212123 212321 232121 111323 131123 131321 112313 132113 132311 211313
    231113 231311 112133 112331 132131 113123 113321 133121 313121 211331
    231131 213113 213311 213131 311123 311321 331121 312113 312311 332111
    314111 221411 431111 111224 111422 121124 121421 141122 141221 112214
    112412 122114 122411 142112 142211 241211 221114 413111 241112 134111
    111242 121142 121241 114212 124112 124211 411212 421112 421211 212141
    214121 412121 111143 111341 131141 114113 114311 411113 411311 113141
    114131 311141 411131 211412 211214 211232 2331112
""".split()

STARTS = (103, 104, 105)  # the sets A, B and C
STOP = 106
MARGIN = "0" * 10


def value_code(value):
    """The code point of a value: what ASCII has no room for stands from 195 on."""
    return value + 32 if value < 95 else value + 100


def symbols():
    for value, widths in enumerate(WIDTHS):
        modules = alternating(widths)
        if value in STARTS:
            modules = MARGIN + modules
        if value == STOP:
            modules = modules + MARGIN
        yield Symbol(code=value_code(value), modules=modules, bottom=0)
