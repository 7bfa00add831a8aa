#!/usr/bin/env python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""Makes the manual pages and the shells' completions from what the programs say with --help.

usage: make_help.py --program FILE --command-line FILE --version V --date YYYY-MM-DD --output FOLDER

What --help does not say (files, environment, …) stands in NAME.txt beside this script, in the same
form: paragraphs, and tables of a term, two blanks or more, and what it means.
"""
import argparse
import gzip
import os
import sys

here = os.path.dirname(os.path.abspath(__file__))
sys.path.insert(0, here)

import completions  # noqa: E402
import helptext  # noqa: E402
import manpage  # noqa: E402


def write(folder, name, text):
    path = os.path.join(folder, name)
    os.makedirs(os.path.dirname(path), exist_ok=True)
    with open(path, "w", encoding="utf-8") as file:
        file.write(text)


def write_packed(folder, name, text):
    """As manual pages are installed; the same text always makes the same bytes."""
    path = os.path.join(folder, name)
    os.makedirs(os.path.dirname(path), exist_ok=True)
    with open(path, "wb") as file, gzip.GzipFile("", "wb", 9, file, mtime=0) as packed:
        packed.write(text.encode("utf-8"))


def main():
    arguments = argparse.ArgumentParser()
    for option in ("program", "command-line", "version", "date", "output"):
        arguments.add_argument("--" + option, required=True)
    options = arguments.parse_args()
    for name, file in (("tavrollo", options.program), ("tavrolloctl", options.command_line)):
        program = helptext.ask(name, file)
        extra = helptext.sections(os.path.join(here, name + ".txt"))
        page = manpage.page(program, extra, options.version, options.date)
        write(options.output, f"man/{name}.1", page)
        write_packed(options.output, f"packed/{name}.1.gz", page)
        write(options.output, f"bash/{name}", completions.bash(program))
        write(options.output, f"zsh/_{name}", completions.zsh(program))
        write(options.output, f"fish/{name}.fish", completions.fish(program))


if __name__ == "__main__":
    main()
