#!/usr/bin/env python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""Joins pictures of one icon in several sizes to an icon of Windows.

usage: make_ico.py ICON.ico PICTURE.png ...

The pictures are square PNG files of at most 256 pixels, and stay PNG inside.
"""
import pathlib
import struct
import sys

PNG = b"\x89PNG\r\n\x1a\n"


def size_of(picture):
    if not picture.startswith(PNG):
        raise SystemExit("make_ico.py: not a PNG file")
    width, height = struct.unpack(">II", picture[16:24])
    if width != height or width > 256:
        raise SystemExit(f"make_ico.py: {width} x {height} pixels are no icon")
    return width


def icon_of(pictures):
    pictures = sorted(pictures, key=size_of)
    head = struct.pack("<HHH", 0, 1, len(pictures))
    place = len(head) + 16 * len(pictures)
    entries = b""
    for picture in pictures:
        size = size_of(picture) % 256  # 256 is written as 0
        entries += struct.pack("<BBBBHHII", size, size, 0, 0, 1, 32, len(picture), place)
        place += len(picture)
    return head + entries + b"".join(pictures)


def main():
    if len(sys.argv) < 3:
        print(__doc__.strip(), file=sys.stderr)
        return 2
    icon, *pictures = map(pathlib.Path, sys.argv[1:])
    icon.write_bytes(icon_of([each.read_bytes() for each in pictures]))
    return 0


if __name__ == "__main__":
    sys.exit(main())
