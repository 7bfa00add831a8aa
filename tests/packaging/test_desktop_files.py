#!/usr/bin/env python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""The menu entry, the software catalogue's entry and the icons: test_desktop_files.py --build FOLDER."""
import argparse
import configparser
import glob
import os
import re
import subprocess
import sys
import unittest
import xml.etree.ElementTree as tree

from PIL import Image

here = os.path.dirname(os.path.abspath(__file__))
sources = os.path.dirname(os.path.dirname(here))
build = None

SIZES = [16, 22, 24, 32, 48, 64, 128, 256]


def run(*words):
    done = subprocess.run(words, capture_output=True, text=True, timeout=60)
    return done.returncode, done.stdout + done.stderr


def metainfo_file():
    (path,) = glob.glob(os.path.join(build, "packaging", "*.metainfo.xml"))
    return path


def desktop_file():
    return os.path.join(sources, "packaging", "desktop", "tavrollo.desktop")


def desktop_entry():
    parser = configparser.ConfigParser(interpolation=None)
    parser.optionxform = str
    parser.read(desktop_file(), encoding="utf-8")
    return parser["Desktop Entry"]


class MenuEntry(unittest.TestCase):
    def test_is_valid(self):
        self.assertEqual(run("desktop-file-validate", desktop_file()), (0, ""))

    def test_claims_no_kind_of_file(self):
        self.assertNotIn("MimeType", desktop_entry())


class CatalogueEntry(unittest.TestCase):
    def setUp(self):
        self.root = tree.parse(metainfo_file()).getroot()

    def test_is_valid(self):
        status, said = run("appstreamcli", "validate", "--no-net", "--no-color", metainfo_file())
        self.assertEqual(status, 0, said)
        self.assertNotRegex(said, r"(?m)^[EW]:")

    def test_nothing_is_left_to_be_filled_in(self):
        with open(metainfo_file(), encoding="utf-8") as file:
            self.assertNotRegex(file.read(), r"@\w+@")

    def test_file_is_named_after_its_component(self):
        self.assertEqual(os.path.basename(metainfo_file()), self.root.findtext("id") + ".metainfo.xml")

    def test_agrees_with_the_menu_entry(self):
        entry = desktop_entry()
        self.assertEqual(self.root.findtext("launchable"), os.path.basename(desktop_file()))
        self.assertEqual(self.root.findtext("name"), entry["Name"])
        self.assertEqual(self.root.findtext("icon"), entry["Icon"])
        self.assertEqual([each.text for each in self.root.iter("category")],
                         entry["Categories"].rstrip(";").split(";"))

    def test_newest_release_is_this_version_and_the_changes_tell_of_each(self):
        versions = [each.get("version") for each in self.root.iter("release")]
        with open(os.path.join(build, "CMakeCache.txt"), encoding="utf-8") as cache:
            self.assertIn(f"CMAKE_PROJECT_VERSION:STATIC={versions[0]}\n", cache.readlines())
        with open(os.path.join(sources, "CHANGES.md"), encoding="utf-8") as changes:
            self.assertEqual(re.findall(r"^## (\d[\w.]*)", changes.read(), re.M), versions)

    def test_pictures_are_the_committed_ones_in_their_size(self):
        pictures = list(self.root.iter("image"))
        self.assertGreaterEqual(len(pictures), 3)
        for picture in pictures:
            name = os.path.basename(picture.text)
            with Image.open(os.path.join(sources, "docs", "images", name)) as image:
                self.assertEqual(image.size, (int(picture.get("width")), int(picture.get("height"))), name)

    def test_every_text_is_in_french_too(self):
        language = "{http://www.w3.org/XML/1998/namespace}lang"
        for parent in self.root.iter():
            for tag in ("summary", "p", "li", "caption"):
                texts = parent.findall(tag)
                french = [each for each in texts if each.get(language) == "fr"]
                self.assertEqual(2 * len(french), len(texts), (parent.tag, tag))


class Icons(unittest.TestCase):
    def test_each_size_is_the_whole_icon(self):
        folder = os.path.join(build, "packaging", "icons")
        self.assertEqual(sorted(os.listdir(folder)), sorted(f"{size}.png" for size in SIZES))
        for size in SIZES:
            with Image.open(os.path.join(folder, f"{size}.png")) as image:
                self.assertEqual((image.size, image.mode), ((size, size), "RGBA"))
                self.assertLess(image.getpixel((0, 0))[3], 128)  # the round corner
                background = image.getpixel((size // 10, size // 2))
                for seen, meant in zip(background, (0x12, 0x83, 0x7B, 0xFF)):
                    self.assertAlmostEqual(seen, meant, delta=3)
                self.assertGreater(min(image.getpixel((size // 2, size // 2))[:3]), 200)  # the letter


if __name__ == "__main__":
    arguments = argparse.ArgumentParser()
    arguments.add_argument("--build", required=True)
    options, rest = arguments.parse_known_args()
    build = options.build
    unittest.main(argv=[sys.argv[0], *rest])
