#!/usr/bin/env python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""The template documents: the committed ones are what the script makes, a program folder is filled
with them, their structure is whole, and an office opens them, where one is installed."""

import argparse
import os
import re
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
FREE, END_OF_CHAIN, TABLE_SECTOR = 0xFFFFFFFF, 0xFFFFFFFE, 0xFFFFFFFD


def content(folder, name):
    with open(os.path.join(folder, name), "rb") as file:
        return file.read()


def rtf_words(text):
    """The control words of an RTF text, the plain text between them as "": depth, word, number."""
    depth = 0
    for brace, word, number, plain in re.findall(r"([{}])|\\([a-z]+)(-?\d*) ?|([^\\{}]+)", text):
        depth += {"{": 1, "}": -1}.get(brace, 0)
        if not brace:
            yield depth, word, int(number) if number else plain


class CompoundFile:
    """The tables of a small one: a header, one sector of allocation table, one of directory."""

    def __init__(self, file):
        self.file = file
        first_table, = struct.unpack_from("<I", file, 76)
        self.table = struct.unpack_from("<128I", file, SECTOR * (first_table + 1))
        self.table_sector = first_table
        self.directory_sector, = struct.unpack_from("<I", file, 48)

    def chain(self, start):
        sectors = []
        while start < TABLE_SECTOR:
            sectors.append(start)
            start = self.table[start]
        return sectors

    def entries(self):
        """Name, kind, child, first sector and size of each directory entry in use."""
        for sector in self.chain(self.directory_sector):
            for place in range(SECTOR * (sector + 1), SECTOR * (sector + 2), 128):
                length, kind = struct.unpack_from("<HB", self.file, place + 64)
                if not kind:
                    continue
                name = self.file[place:place + length - 2].decode("utf-16-le")
                child, = struct.unpack_from("<I", self.file, place + 76)
                yield name, kind, child, *struct.unpack_from("<IQ", self.file, place + 116)

    def stream(self, wanted):
        for name, _, _, start, size in self.entries():
            if name == wanted:
                sectors = [self.file[SECTOR * (n + 1):SECTOR * (n + 2)] for n in self.chain(start)]
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
        letter = content(DOCUMENTS, NAMES[0]).decode("ascii")
        depths = []
        for each in re.findall(r"[{}]", letter):
            depths.append((depths[-1] if depths else 0) + (1 if each == "{" else -1))
        self.assertTrue(letter.startswith("{\\rtf1\\ansi") and letter.endswith("}"))
        self.assertEqual(depths[-1], 0)
        self.assertNotIn(0, depths[:-1], "one group holds it all")

        words = list(rtf_words(letter))
        body = {word: number for depth, word, number in words if depth == 1}
        tables = [(word, number) for depth, word, number in words if depth > 1]
        self.assertEqual([number for word, number in tables if word == "f"], [0, 0], "font, style")
        self.assertIn(("", "Liberation Serif;"), tables)
        self.assertIn(("", "Normal;"), tables)
        self.assertEqual([body[word] for word in ("deff", "s", "f", "fs")], [0, 0, 0, 24])
        self.assertEqual((body["paperw"], body["paperh"]), (11906, 16838), "A4")
        self.assertIn("par", body)
        self.assertNotIn("", body, "it is empty")

    def test_the_workbook_is_a_whole_compound_file(self):
        file = content(DOCUMENTS, NAMES[1])
        self.assertEqual(file[:8].hex(), "d0cf11e0a1b11ae1")
        self.assertEqual(struct.unpack_from("<HHHHH", file, 24), (0x003E, 3, 0xFFFE, 9, 6))
        whole = CompoundFile(file)
        self.assertEqual(len(file) % SECTOR, 0)
        sectors = len(file) // SECTOR - 1
        root, book = whole.entries()
        self.assertEqual(root[:3], ("Root Entry", 5, 1))
        self.assertEqual(book[:2], ("Workbook", 2))
        chains = [whole.chain(whole.directory_sector), whole.chain(book[3])]
        used = [whole.table_sector] + sum(chains, [])
        self.assertEqual(sorted(used), list(range(sectors)), "each sector has one owner")
        self.assertEqual([whole.table[each[-1]] for each in chains], [END_OF_CHAIN] * 2)
        self.assertEqual(whole.table[whole.table_sector], TABLE_SECTOR)
        self.assertEqual(set(whole.table[sectors:]), {FREE})
        self.assertGreaterEqual(book[4], 4096, "a smaller stream would stand elsewhere")
        self.assertEqual(book[4], SECTOR * len(chains[1]))

    def test_the_workbook_has_three_empty_sheets(self):
        stream = CompoundFile(content(DOCUMENTS, NAMES[1])).stream("Workbook")
        self.assertIsNotNone(stream)
        head = list(records(stream))
        kinds = [kind for kind, _ in head]
        self.assertEqual(struct.unpack_from("<HH", head[0][1]), (0x0600, 0x0005))
        self.assertEqual(kinds, [0x0809, 0x0042, 0x003D, 0x0022] + [0x0031] * 4 + [0x00E0] * 16
                         + [0x0293] + [0x0085] * 3 + [0x000A], "fonts, formats, style, sheets")
        styles = [struct.unpack_from("<H", data, 4)[0] & 4 for kind, data in head if kind == 0x00E0]
        self.assertEqual(styles, [4] * 15 + [0], "one format is a cell's")

        names, selected = [], []
        place = sum(4 + len(data) for _, data in head)
        for _, data in (each for each in head if each[0] == 0x0085):
            offset, = struct.unpack_from("<I", data)
            names.append(data[8:].decode("utf-16-le"))
            self.assertEqual(offset, place, "sheets follow each other")
            inside = list(records(stream, offset))
            self.assertEqual([kind for kind, _ in inside], [0x0809, 0x0200, 0x023E, 0x000A])
            self.assertEqual(struct.unpack_from("<HH", inside[0][1]), (0x0600, 0x0010))
            self.assertEqual(set(inside[1][1]), {0}, "no cell is used")
            selected.append(struct.unpack_from("<H", inside[2][1])[0] & 0x0200 != 0)
            place += sum(4 + len(each) for _, each in inside)
        self.assertEqual(names, ["Feuille1", "Feuille2", "Feuille3"])
        self.assertEqual(selected, [True, False, False])
        self.assertEqual(set(stream[place:]), {0})

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
