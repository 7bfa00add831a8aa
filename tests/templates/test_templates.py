#!/usr/bin/env python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""The template documents: the committed ones are what the script makes, a program folder is filled
with them, and an office opens them, where one is installed."""

import argparse
import os
import shutil
import struct
import subprocess
import sys
import tempfile
import unittest

ROOT = os.path.abspath(os.path.join(os.path.dirname(__file__), "..", ".."))
DOCUMENTS = os.path.join(ROOT, "modeles_word_excel")
NAMES = ("modele_defaut.doc", "modele_defaut.xls")
BUILD = None
SECTOR = 512


def content(folder, name):
    with open(os.path.join(folder, name), "rb") as file:
        return file.read()


def chain(table, start):
    while start < 0xFFFFFFFA:
        yield start
        start = table[start]


def workbook_stream(file):
    """The stream Workbook of a compound file, read by its own tables."""
    first_table, = struct.unpack_from("<I", file, 76)
    table = struct.unpack_from("<128I", file, SECTOR * (first_table + 1))
    first_directory, = struct.unpack_from("<I", file, 48)
    for sector in chain(table, first_directory):
        for place in range(SECTOR * (sector + 1), SECTOR * (sector + 2), 128):
            length, = struct.unpack_from("<H", file, place + 64)
            if file[place:place + max(0, length - 2)].decode("utf-16-le") != "Workbook":
                continue
            start, size = struct.unpack_from("<IQ", file, place + 116)
            sectors = [file[SECTOR * (n + 1):SECTOR * (n + 2)] for n in chain(table, start)]
            return b"".join(sectors)[:size]
    return None


def records(stream, at=0):
    """The records from a beginning to its end."""
    while True:
        kind, length = struct.unpack_from("<HH", stream, at)
        yield kind, stream[at + 4:at + 4 + length]
        if kind == 0x000A:
            return
        at += 4 + length


class Templates(unittest.TestCase):
    def test_the_committed_documents_are_what_the_script_makes(self):
        with tempfile.TemporaryDirectory() as folder:
            script = os.path.join(DOCUMENTS, "make_templates.py")
            subprocess.run([sys.executable, "-B", script, folder], check=True)
            for name in NAMES:
                self.assertEqual(content(folder, name), content(DOCUMENTS, name), name)

    def test_a_program_folder_is_filled_with_them(self):
        for name in NAMES:
            filled = os.path.join(BUILD, "template", "modeles_word_excel")
            self.assertEqual(content(filled, name), content(DOCUMENTS, name), name)

    def test_the_letter_is_whole(self):
        letter = content(DOCUMENTS, "modele_defaut.doc").decode("ascii")
        self.assertTrue(letter.startswith("{\\rtf1"))
        self.assertEqual(letter.count("{"), letter.count("}"))

    def test_the_workbook_has_three_empty_sheets(self):
        stream = workbook_stream(content(DOCUMENTS, "modele_defaut.xls"))
        self.assertIsNotNone(stream)
        names = []
        for kind, data in records(stream):
            if kind != 0x0085:
                continue
            offset, = struct.unpack_from("<I", data)
            names.append(data[8:].decode("utf-16-le"))
            inside = list(records(stream, offset))
            self.assertEqual(inside[0][0], 0x0809)
            self.assertEqual(struct.unpack_from("<HH", inside[0][1]), (0x0600, 0x0010))
            self.assertEqual(inside[1][0], 0x0200)
        self.assertEqual(names, ["Feuille1", "Feuille2", "Feuille3"])

    @unittest.skipUnless(shutil.which("soffice"), "no office is installed")
    def test_an_office_opens_them(self):
        with tempfile.TemporaryDirectory() as folder:
            profile = "-env:UserInstallation=file://" + os.path.join(folder, "profile")
            for name, kind, holds in ((NAMES[0], "fodt", "office:text"),
                                      (NAMES[1], "fods", 'table:name="Feuille3"')):
                subprocess.run(["soffice", profile, "--headless", "--convert-to", kind, "--outdir",
                                folder, os.path.join(DOCUMENTS, name)], check=True, timeout=110,
                               stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
                made = os.path.splitext(name)[0] + "." + kind
                self.assertIn(holds, content(folder, made).decode("utf-8"), name)


if __name__ == "__main__":
    parser = argparse.ArgumentParser()
    parser.add_argument("--build", required=True)
    asked, rest = parser.parse_known_args()
    BUILD = asked.build
    unittest.main(argv=sys.argv[:1] + rest)
