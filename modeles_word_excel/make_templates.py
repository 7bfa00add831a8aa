#!/usr/bin/env python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""Makes the template documents, an empty letter and an empty spreadsheet:
modeles_word_excel/make_templates.py [FOLDER]. Without a folder, the ones beside it.

modele_defaut.doc is RTF, which word processors open under either name. modele_defaut.xls is a real
binary workbook (BIFF8 in a compound file): a spreadsheet program warns of any other content under
that name."""

import os
import struct
import sys

LETTER = (
    r"{\rtf1\ansi\ansicpg1252\deff0\deflang1036"
    r"{\fonttbl{\f0\froman\fcharset0 Liberation Serif;}}"
    r"{\stylesheet{\s0\f0\fs24 Normal;}}"
    r"\paperw11906\paperh16838\margl1134\margr1134\margt1134\margb1134"
    r"\pard\plain\s0\f0\fs24\par}"
)

SECTOR = 512
FREE, END_OF_CHAIN, FAT_SECTOR = 0xFFFFFFFF, 0xFFFFFFFE, 0xFFFFFFFD
SMALLEST_STREAM = 4096  # a shorter one would have to stand in the table of small sectors


# --- The workbook's records ---

def record(kind, data=b""):
    return struct.pack("<HH", kind, len(data)) + data


def begin(substream):
    return record(0x0809, struct.pack("<HHHHII", 0x0600, substream, 0x0DBB, 0x07CC, 0x41, 0x06))


def unicode_text(text, length_format):
    return struct.pack(length_format, len(text)) + b"\x01" + text.encode("utf-16-le")


def font(name="Arial", height=200):
    return record(0x0031, struct.pack("<HHHHHBBBB", height, 0, 0x7FFF, 400, 0, 0, 2, 0, 0)
                  + unicode_text(name, "<B"))


def cell_format(parent, style):
    """An XF record: the default font, format, alignment and colours."""
    kind = 0xFFF5 if style else (parent << 4) | 0x0001
    return record(0x00E0, struct.pack("<HHHBBBBIIH", 0, 0, kind, 0x20, 0, 0, 0, 0, 0, 0x20C0))


def sheet_entry(name, offset):
    return record(0x0085, struct.pack("<IBB", offset, 0, 0) + unicode_text(name, "<B"))


def sheet(selected):
    window = struct.pack("<HHHIHHI", 0x06B6 if selected else 0x00B6, 0, 0, 64, 0, 0, 0)
    return (begin(0x0010)
            + record(0x0200, struct.pack("<IIHHH", 0, 0, 0, 0, 0))  # no cell is used
            + record(0x023E, window)
            + record(0x000A))


def workbook(names):
    sheets = [sheet(selected=i == 0) for i in range(len(names))]
    head = begin(0x0005)
    head += record(0x0042, struct.pack("<H", 1200))  # texts are UTF-16
    head += record(0x003D, struct.pack("<HHHHHHHHH", 0, 0, 0x3840, 0x2580, 0x0038, 0, 0, 1, 600))
    head += record(0x0022, struct.pack("<H", 0))  # days count from 1900
    head += font() * 4
    head += cell_format(0, style=True) * 15 + cell_format(0, style=False)
    head += record(0x0293, struct.pack("<HBB", 0x8000, 0, 0xFF))  # the built-in style Normal
    end = record(0x000A)

    entries_length = sum(len(sheet_entry(name, 0)) for name in names)
    offset = len(head) + entries_length + len(end)
    entries = b""
    for name, content in zip(names, sheets):
        entries += sheet_entry(name, offset)
        offset += len(content)
    return head + entries + end + b"".join(sheets)


# --- The compound file around them ---

def directory_entry(name, kind, child=FREE, start=0, size=0):
    encoded = (name + "\0").encode("utf-16-le") if name else b""
    return (encoded.ljust(64, b"\0") + struct.pack("<HBB", len(encoded), kind, 1)
            + struct.pack("<III", FREE, FREE, child) + bytes(16) + struct.pack("<I", 0) + bytes(16)
            + struct.pack("<IQ", start, size))


def compound_file(stream_name, stream):
    size = max(len(stream), SMALLEST_STREAM)
    size += -size % SECTOR
    stream = stream.ljust(size, b"\0")
    stream_sectors = size // SECTOR
    # Sector 0 is the allocation table, 1 the directory, the stream follows.
    table = [FAT_SECTOR, END_OF_CHAIN]
    table += [2 + i + 1 for i in range(stream_sectors - 1)] + [END_OF_CHAIN]
    assert len(table) <= SECTOR // 4
    table += [FREE] * (SECTOR // 4 - len(table))

    header = bytes.fromhex("D0CF11E0A1B11AE1") + bytes(16)
    header += struct.pack("<HHHHH", 0x003E, 3, 0xFFFE, 9, 6) + bytes(6)
    header += struct.pack("<IIIIIIIII", 0, 1, 1, 0, SMALLEST_STREAM, END_OF_CHAIN, 0, END_OF_CHAIN, 0)
    header += struct.pack("<I", 0) + struct.pack("<I", FREE) * 108

    directory = directory_entry("Root Entry", 5, child=1, start=END_OF_CHAIN)
    directory += directory_entry(stream_name, 2, start=2, size=size)
    directory += directory_entry("", 0) * 2
    return header + struct.pack("<%dI" % len(table), *table) + directory + stream


def make(folder):
    sheets = ["Feuille1", "Feuille2", "Feuille3"]
    for name, content in (("modele_defaut.doc", LETTER.encode("ascii")),
                          ("modele_defaut.xls", compound_file("Workbook", workbook(sheets)))):
        with open(os.path.join(folder, name), "wb") as file:
            file.write(content)


if __name__ == "__main__":
    make(sys.argv[1] if len(sys.argv) > 1 else os.path.dirname(os.path.abspath(__file__)))
