#!/usr/bin/env python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""Makes Debian's changelog out of CHANGES.md.

usage: make_changelog.py CHANGES.md PUBLISHER MAIL YYYY-MM-DD OUTPUT.gz

The newest version is dated YYYY-MM-DD; an older one by its heading, "## 1.0.0 (2026-11-21)".
"""
import datetime
import email.utils
import gzip
import re
import sys
import textwrap

HEADING = re.compile(r"^## (\d[\w.]*)(?: \(([\d-]+|unreleased)\))?$", re.M)


def entries(text):
    """The points of one version, each on one line."""
    points = []
    for line in text.splitlines():
        if line.startswith("- "):
            points.append(line[2:].strip())
        elif line.startswith("  ") and points:
            points[-1] += " " + line.strip()
    return points


def changelog(changes, publisher, mail, date):
    parts = HEADING.split(changes)[1:]
    versions = [parts[start:start + 3] for start in range(0, len(parts), 3)]
    if not versions:
        raise ValueError("no heading of a version")
    text = []
    for number, (version, dated, points) in enumerate(versions):
        day = datetime.datetime.fromisoformat(date if number == 0 else dated)
        day = day.replace(hour=12, tzinfo=datetime.timezone.utc)
        text.append(f"tavrollo ({version}) unstable; urgency=medium\n\n")
        for point in entries(points):
            text.append(textwrap.fill(point.replace("`", ""), 78, initial_indent="  * ",
                                      subsequent_indent="    ", break_long_words=False,
                                      break_on_hyphens=False) + "\n")
        text.append(f"\n -- {publisher} <{mail}>  {email.utils.format_datetime(day)}\n\n")
    return "".join(text).rstrip("\n") + "\n"


def main():
    source, publisher, mail, date, output = sys.argv[1:]
    with open(source, encoding="utf-8") as file:
        text = changelog(file.read(), publisher, mail, date)
    with open(output, "wb") as file, gzip.GzipFile("", "wb", 9, file, mtime=0) as packed:
        packed.write(text.encode("utf-8"))


if __name__ == "__main__":
    main()
