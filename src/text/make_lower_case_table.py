#!/usr/bin/env python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""Prints LowerCaseTable.inc: runs of code units whose simple lower case lies at one distance.

A run is {first, last, step, distance}; step 2 is for alphabets that alternate upper and lower case.
Only the basic plane is covered: the program's text is UTF-16 and is folded unit by unit.
"""
import unicodedata

pairs = []
for code in range(0x10000):
    lower = chr(code).lower()
    if code == 0x130:  # its lower case is two characters; the simple mapping is i
        lower = "i"
    if len(lower) == 1 and ord(lower) != code and ord(lower) < 0x10000:
        pairs.append((code, ord(lower) - code))

runs = []
for code, distance in pairs:
    if runs:
        first, last, step, run_distance = runs[-1]
        gap = code - last
        if distance == run_distance and gap in (1, 2) and (first == last or gap == step):
            runs[-1] = (first, code, gap, run_distance)
            continue
    runs.append((code, code, 1, distance))

print("// SPDX-License-Identifier: GPL-3.0-or-later")
print(f"// Made by make_lower_case_table.py from Unicode {unicodedata.unidata_version}.")
for first, last, step, distance in runs:
    print(f"{{0x{first:04X}, 0x{last:04X}, {step}, {distance}}},")
