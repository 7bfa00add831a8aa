# SPDX-License-Identifier: GPL-3.0-or-later
"""What a program says with --help, taken apart: how it is called, its verbs, its options, paragraphs
and tables."""
import re
import subprocess

USAGE = "Usage : "
EXIT_STATUS = "Code de retour : "
VERBS = "Verbes :"

OPTION = re.compile(r"(--[a-z][a-z-]*)(?:[ =]([A-Z]+))?")
ARGUMENT = re.compile(r"(?<![A-Za-z\[-])[A-Z]{4,}(?![a-z])")


class Help:
    """One --help text."""

    def __init__(self, name, text):
        self.name = name  # "tavrolloctl compare"
        self.usages = []  # "tavrolloctl compare SOURCE …"
        self.blocks = []  # see blocks()
        self.exit_status = None
        self._read(text.splitlines())

    def _read(self, lines):
        while lines and (lines[0].startswith(USAGE) or self.usages and lines[0].startswith(" " * len(USAGE))):
            self.usages.append(lines.pop(0)[len(USAGE):].strip())
        if not self.usages:
            raise ValueError(f"{self.name} --help does not begin with \"{USAGE}\"")
        rest = "\n".join(lines)
        before, _, status = rest.partition("\n" + EXIT_STATUS)
        self.blocks = blocks(before)
        if status:
            self.exit_status = " ".join(status.split())

    def table(self):
        return [row for kind, rows in self.blocks if kind == "table" for row in rows]

    def paragraphs(self):
        return [text for kind, text in self.blocks if kind == "paragraph"]

    def options(self):
        """Each option once: its name, what its value is called or None, what it means or ""."""
        found = {}
        for term, meaning in self.table():
            for name, value in OPTION.findall(term):
                found[name] = (name, value or None, meaning)
        for usage in self.usages:
            for name, value in OPTION.findall(usage):
                found.setdefault(name, (name, value or None, ""))
        return list(found.values())

    def arguments(self):
        """What the arguments are called that are no options, in their order."""
        without_options = OPTION.sub("", self.usages[0])
        return ARGUMENT.findall(without_options)


class Program(Help):
    """A program's own --help, and that of each of its verbs."""

    def __init__(self, name, text, ask_verb=None):
        super().__init__(name, text)
        self.verbs = []
        if VERBS in self.paragraphs():
            self.purposes = dict(self.table())
            self.verbs = [Help(f"{name} {verb}", ask_verb(verb)) for verb in self.purposes]


def blocks(text):
    """Paragraphs ("paragraph", text) and tables ("table", [(term, meaning), …]) in their order."""
    found = []
    open_paragraph = False
    for line in text.splitlines():
        fields = re.split(r" {2,}", line.strip())
        if not line.strip():
            open_paragraph = False
        elif not line.startswith("  "):
            if open_paragraph:
                found[-1] = ("paragraph", found[-1][1] + " " + line.strip())
            else:
                found.append(("paragraph", line.strip()))
            open_paragraph = not line.rstrip().endswith(":")
        elif line.startswith(" " * 8) and found and found[-1][0] == "table":
            term, meaning = found[-1][1][-1]
            found[-1][1][-1] = (term, (meaning + " " + line.strip()).strip())
        else:
            open_paragraph = False
            if not found or found[-1][0] != "table":
                found.append(("table", []))
            fields += [""] * (len(fields) % 2)
            found[-1][1].extend(zip(fields[0::2], fields[1::2]))
    return found


def sections(path):
    """The sections of a text file whose headings begin with "# ": title to blocks."""
    found = {}
    with open(path, encoding="utf-8") as file:
        for part in re.split(r"^# ", file.read(), flags=re.M)[1:]:
            title, _, text = part.partition("\n")
            found[title.strip()] = blocks(text)
    return found


def say(file, *words):
    return subprocess.run([file, *words, "--help"], capture_output=True, text=True, encoding="utf-8",
                          check=True, timeout=30).stdout


def ask(name, file):
    return Program(name, say(file), lambda verb: say(file, verb))
