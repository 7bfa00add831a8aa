#!/usr/bin/env python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""Draws the rooms and who includes whom, from the sources' own includes.

usage: make_house.py SRC PICTURE.svg            writes the picture
       make_house.py --check SRC PICTURE.svg    exit status 1 when the picture is not today's

A line goes from a room to each room that it includes: all lead upwards.
"""
import pathlib
import sys

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parent.parent / "tests" / "house"))
from house_includes import QT_HEADER, ROOMS, read_sources  # noqa: E402

WORDS = {
    "text": "text, bytes, paths, numbers",
    "platform": "what the operating system does",
    "config": "settings, shortcuts, finding the store",
    "windows": "splash, test window",
    "bridge": "from the cookie store to the command",
    "barcode": "from a text to its bars",
    "sync": "keeping two folders in step",
    "tray": "icon, menu, launchers, notice",
    "app": "the state, the start, the main window",
    "tools": "tavrolloctl, reload",
}

LEFT, TOP, WIDTH, HEIGHT, STEP = 20, 20, 400, 40, 54
LOGIC, WINDOWS, LINE = "#2f6f8f", "#d98e32", "#6b7680"


def wanted_rooms(sources):
    """Each room with the rooms that its files include, from the ground up."""
    wanted = {room: set() for room in ROOMS}
    for source in sources.values():
        for include in source.includes:
            room = include.name.split("/")[0]
            if room in wanted and source.room in wanted and room != source.room:
                wanted[source.room].add(room)
    return wanted


def has_windows(source):
    """A form's header has the name of its form: ui_frmTest.h."""
    return any(QT_HEADER.match(i.name) or i.name.startswith("ui_") for i in source.includes)


def middle(room):
    return TOP + ROOMS.index(room) * STEP + HEIGHT / 2


def room_box(room, sources):
    code = [s for s in sources.values() if s.room == room and s.path.endswith((".h", ".cpp"))]
    windows = [has_windows(source) for source in code]
    top = TOP + ROOMS.index(room) * STEP
    lines = [f'<rect x="{LEFT}" y="{top}" width="{WIDTH}" height="{HEIGHT}" rx="6" '
             f'fill="#ffffff" stroke="{LINE}"/>']
    colours = [LOGIC] * (not all(windows)) + [WINDOWS] * any(windows)
    for number, colour in enumerate(colours):
        height = (HEIGHT - 12) / len(colours)
        lines.append(f'<rect x="{LEFT + 6}" y="{top + 6 + number * height:g}" width="6" '
                     f'height="{height:g}" fill="{colour}"/>')
    lines.append(f'<text x="{LEFT + 24}" y="{top + 25}"><tspan font-weight="bold">{room}</tspan>'
                 f'<tspan x="{LEFT + 110}">{WORDS[room]}</tspan></text>')
    return lines


def include_line(room, included):
    right = LEFT + WIDTH
    begin, end = middle(room) - 6, middle(included) + 6
    reach = right + 22 + 17 * (ROOMS.index(room) - ROOMS.index(included))
    return (f'<path d="M{right} {begin:g} C{reach} {begin:g} {reach} {end:g} {right + 3} {end:g}" '
            f'fill="none" stroke="{LINE}" stroke-opacity="0.6" marker-end="url(#tip)"/>')


def picture(sources):
    height = TOP + len(ROOMS) * STEP + 34
    lines = [f'<svg xmlns="http://www.w3.org/2000/svg" width="620" height="{height}" '
             f'viewBox="0 0 620 {height}" font-family="sans-serif" font-size="14" fill="#20262b">',
             "<!-- SPDX-License-Identifier: GPL-3.0-or-later; made by docs/make_house.py -->",
             "<title>The rooms of Tavrollo and who includes whom</title>",
             '<defs><marker id="tip" viewBox="0 0 6 6" refX="5" refY="3" markerWidth="7" '
             f'markerHeight="7" orient="auto"><path d="M0 0L6 3L0 6z" fill="{LINE}"/></marker></defs>',
             '<rect width="100%" height="100%" fill="#f6f7f8"/>']
    for room, wanted in wanted_rooms(sources).items():
        lines += [include_line(room, included) for included in ROOMS if included in wanted]
    for room in ROOMS:
        lines += room_box(room, sources)
    base = height - 20
    for x, colour, words in ((LEFT, LOGIC, "standard C++ alone"), (LEFT + 190, WINDOWS, "with Qt")):
        lines.append(f'<rect x="{x}" y="{base - 11}" width="12" height="12" fill="{colour}"/>'
                     f'<text x="{x + 20}" y="{base}">{words}</text>')
    return "\n".join(lines + ["</svg>", ""])


def main(arguments):
    check = arguments[:1] == ["--check"]
    if len(arguments) != 2 + check:
        print(__doc__, file=sys.stderr)
        return 2
    source, file = map(pathlib.Path, arguments[check:])
    drawn = picture(read_sources(source))
    if not check:
        file.write_text(drawn, encoding="utf-8")
        return 0
    if file.read_text(encoding="utf-8") == drawn:
        return 0
    print(f"{file} is not today's: python3 docs/make_house.py src {file}", file=sys.stderr)
    return 1


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
