#!/usr/bin/env python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""Checks the rules of the house that the compiler does not know.

usage: house_includes.py SRC

Reads every source below the folder SRC and prints one line for each breach:
  - an include of a file of a room further down than the includer's own,
  - a circle of includes between files,
  - Qt, itself or through another file, outside the windows (frm* files, a room's qt/ folder, tray/,
    app/),
  - an #if for the operating system outside platform/,
  - what is chosen when building, a file of a room's linux/ or windows/ folder, included from
    outside that folder (platform/ may include its own; the linux/ or windows/ folder of another room
    may include what platform has for the same system),
  - a source that does not begin with its licence.
The exit status is 1 when there was a breach, 2 when there was nothing to read.
"""
import pathlib
import re
import sys

ROOMS = ["text", "platform", "config", "windows", "bridge", "barcode", "sync", "tray", "setup", "app", "tools"]

LICENCE = "SPDX-License-Identifier: GPL-3.0-or-later"
CODE = (".h", ".cpp", ".inc", ".h.in")
LICENSED = CODE + (".py", "CMakeLists.txt")

QT_HEADER = re.compile(r"Q\w*$|Qt\w*/|q\w+\.h$")
SYSTEM_FOLDERS = ("linux", "windows")
SYSTEM_MACRO = re.compile(
    r"\b(Q_OS_\w+|TARGET_OS_\w+|_?WIN(?:32|64)|__WIN(?:32|64)__|__MINGW(?:32|64)__|__CYGWIN__"
    r"|(?:__)?linux(?:__)?|__gnu_linux__|(?:__)?unix(?:__)?|__APPLE__|__MACH__|__ANDROID__"
    r"|__(?:Free|Net|Open)BSD__)\b")

DIRECTIVE = re.compile(r"\s*#\s*(\w+)\b\s*(.*)")
INCLUDED = re.compile(r"""(?:<([^>]+)>|"([^"]+)")""")

# What is not to be taken for a comment or a directive: literals, and numbers with their "'".
LEXEME = re.compile(
    r'(?P<comment>//[^\n]*|/\*.*?\*/)|(?P<raw>R"(?P<mark>[^\s()\\]*)\(.*?\)(?P=mark)")'
    r"""|"(?:\\.|[^"\\\n])*"|(?<!\w)\d(?:'?[\w.])*|'(?:\\.|[^'\\\n])+'""", re.DOTALL)


class Include:
    def __init__(self, line, name):
        self.line = line
        self.name = name  # as written, without its marks


class Source:
    """A source: its path below the folder (with "/"), its includes, its system-dependent lines."""

    def __init__(self, path, text):
        self.path = path
        self.parts = path.split("/")
        self.first_lines = text.split("\n", 2)[:2]
        self.includes = []
        self.unreadable_includes = []
        self.system_lines = []
        if path.endswith(CODE):
            self._read_directives(text)

    @property
    def room(self):
        return self.parts[0]

    def _read_directives(self, text):
        for number, line in logical_lines(without_comments(text)):
            directive = DIRECTIVE.match(line)
            if not directive:
                continue
            word, rest = directive.groups()
            if word == "include":
                name = INCLUDED.match(rest)
                if name:
                    self.includes.append(Include(number, name.group(1) or name.group(2)))
                else:
                    self.unreadable_includes.append(number)
            elif word.startswith(("if", "elif")) and SYSTEM_MACRO.search(rest):
                self.system_lines.append((number, SYSTEM_MACRO.search(rest).group()))


def without_comments(text):
    """The text with its comments and raw strings blanked, line for line."""
    def blank(match):
        if match.group("comment") or match.group("raw"):
            return " " + "\n" * match.group().count("\n")
        return match.group()
    return LEXEME.sub(blank, text)


def logical_lines(text):
    """Each line with its number, a line that ends with a backslash joined with the next ones."""
    joined, begin = "", 0
    for number, line in enumerate(text.split("\n"), 1):
        begin = begin or number
        if line.endswith("\\"):
            joined += line[:-1] + " "
            continue
        yield begin, joined + line
        joined, begin = "", 0
    if joined:
        yield begin, joined


def read_sources(folder):
    """Every source below the folder by its path."""
    sources = {}
    for file in sorted(folder.rglob("*")):
        if file.is_file() and file.name.endswith(LICENSED):
            path = file.relative_to(folder).as_posix()
            sources[path] = Source(path, file.read_text(encoding="utf-8", errors="replace"))
    return sources


def may_hold_qt(source):
    return (source.room in ("tray", "app") or source.parts[-1].startswith("frm")
            or "qt" in source.parts[1:-1])


def system_folder(parts):
    """(room, "linux" or "windows") for a path inside such a folder of a room, else None."""
    if len(parts) > 2 and parts[1] in SYSTEM_FOLDERS:
        return parts[0], parts[1]
    return None


class House:
    """Looks at all sources together. `breaches` are lines "file:line: sentence"."""

    def __init__(self, folder):
        self.folder = folder
        self.sources = read_sources(folder)
        self.breaches = []

    def check(self):
        for source in self.sources.values():
            self._licence(source)
            self._room(source)
            self._system(source)
            for line in source.unreadable_includes:
                self._breach(source, line, 'an include that names no file: write "room/File.h"')
            for include in source.includes:
                self._include(source, include)
        self._qt()
        self._circles()
        return self.breaches

    def _breach(self, source, line, sentence):
        self.breaches.append(f"{source.path}:{line}: {sentence}")

    def _licence(self, source):
        first, *rest = source.first_lines
        if first.startswith("#!") and rest:
            first = rest[0]
        if LICENCE not in first or not first.startswith(("// ", "# ")):
            self._breach(source, 1, f"the first line does not say {LICENCE}")

    def _room(self, source):
        if source.room not in ROOMS and len(source.parts) > 1:
            self._breach(source, 1, f"{source.room} is no room; the rooms are {', '.join(ROOMS)}")

    def _system(self, source):
        if source.room == "platform":
            return
        for line, macro in source.system_lines:
            self._breach(source, line, f"asks for the operating system ({macro}) outside platform/")

    def _include(self, source, include):
        if include.name not in self.sources:
            if include.name.split("/")[0] in ROOMS:
                if f"{include.name}.in" not in self.sources:
                    self._breach(source, include.line, f"{include.name} does not exist")
            elif ".." in include.name or "/".join([*source.parts[:-1], include.name]) in self.sources:
                self._breach(source, include.line,
                             f'{include.name}: write the room in front of it, "room/File.h"')
        self._order(source, include)
        self._foreign_system_folder(source, include)

    def _order(self, source, include):
        room = include.name.split("/")[0]
        if "/" not in include.name or room not in ROOMS or source.room not in ROOMS:
            return
        if ROOMS.index(room) > ROOMS.index(source.room):
            self._breach(source, include.line,
                         f"{source.room} includes {include.name}, but {room} is further down: "
                         f"{' < '.join(ROOMS)}")

    def _foreign_system_folder(self, source, include):
        folder = system_folder(include.name.split("/"))
        if not folder or folder[0] not in ROOMS or source.room == folder[0] == "platform":
            return
        here = system_folder(source.parts)
        # What another room has for one system may use what platform has for the same one.
        if here == folder or folder[0] == "platform" and here and here[1] == folder[1]:
            return
        self._breach(source, include.line,
                     f"{include.name} is chosen when building: include what stands in front of it")

    def _is_qt(self, name):
        return bool(QT_HEADER.match(name)) or name.startswith("ui_")

    def _qt(self):
        """Qt reaches a file by a header of its own or through the files that it includes."""
        holding = {s.path for s in self.sources.values() if any(self._is_qt(i.name) for i in s.includes)}
        grown = True
        while grown:
            more = {s.path for s in self.sources.values()
                    if s.path not in holding and any(i.name in holding for i in s.includes)}
            holding |= more
            grown = bool(more)
        for source in self.sources.values():
            if may_hold_qt(source):
                continue
            for include in source.includes:
                if self._is_qt(include.name):
                    self._breach(source, include.line, f"Qt ({include.name}) outside the windows")
                elif include.name in holding:
                    self._breach(source, include.line, f"Qt outside the windows, through {include.name}")

    def _circles(self):
        done, way = set(), []

        def visit(path):
            if path in way:
                circle = way[way.index(path):] + [path]
                line = next(i.line for i in self.sources[way[-1]].includes if i.name == path)
                self._breach(self.sources[way[-1]], line, f"a circle: {' -> '.join(circle)}")
                return
            if path in done:
                return
            way.append(path)
            for include in self.sources[path].includes:
                if include.name in self.sources:
                    visit(include.name)
            way.pop()
            done.add(path)

        for path in self.sources:
            visit(path)


def main(arguments):
    if len(arguments) != 1:
        print(__doc__, file=sys.stderr)
        return 2
    house = House(pathlib.Path(arguments[0]))
    if not any(source.includes for source in house.sources.values()):
        print(f"{arguments[0]}: there is no source with an include here", file=sys.stderr)
        return 2
    breaches = house.check()
    for breach in breaches:
        print(breach)
    includes = sum(len(source.includes) for source in house.sources.values())
    print(f"{len(house.sources)} files, {includes} includes, {len(breaches)} breaches")
    return 1 if breaches else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
