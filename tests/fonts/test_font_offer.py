#!/usr/bin/env python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""Whether word processors find the fonts: fontconfig (fc-list, fc-match) is asked where an installation,
and where the script that offers them to one user, puts them."""
import os
import pathlib
import re
import subprocess
import tempfile
import unittest

import built

SOURCE = pathlib.Path(__file__).parents[2]
OFFER = SOURCE / "packaging" / "offer-fonts"


class FontOffer(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = pathlib.Path(folder.name)

    def asked(self, data_home, *command):
        """What a tool of fontconfig says to a user whose XDG_DATA_HOME this is."""
        environment = dict(os.environ, XDG_DATA_HOME=str(data_home), HOME=str(self.folder / "home"),
                           XDG_CACHE_HOME=str(self.folder / "cache"))
        return subprocess.run(command, env=environment, stdout=subprocess.PIPE, check=True,
                              encoding="utf-8").stdout

    def expect_found_below(self, data_home):
        for family, name in built.FAMILIES.items():
            where = self.asked(data_home, "fc-match", "--format=%{family}\t%{style}\t%{file}",
                               family).split("\t")
            self.assertEqual([family, "Regular"], where[:2])
            self.assertEqual(name, pathlib.Path(where[2]).name)
            self.assertTrue(pathlib.Path(where[2]).is_relative_to(data_home), where[2])
            self.assertEqual(pathlib.Path(where[2]).read_bytes(),
                             built.font_path(family).read_bytes())

    def test_nobody_has_them_without_being_offered_them(self):
        below = self.folder / "share"
        below.mkdir()
        for line in self.asked(below, "fc-list", ":", "file").splitlines():
            self.assertFalse(line.startswith(str(below)), line)

    def test_an_installation_puts_them_where_fontconfig_looks(self):
        subprocess.run(["cmake", "--install", built.build, "--component", "fonts"], check=True,
                       env=dict(os.environ, DESTDIR=str(self.folder / "root")),
                       stdout=subprocess.DEVNULL)
        cache = pathlib.Path(built.build, "CMakeCache.txt").read_text(encoding="utf-8")
        prefix = re.search(r"^CMAKE_INSTALL_PREFIX:PATH=/(.*)$", cache, re.MULTILINE)[1]
        share = self.folder / "root" / prefix / "share"
        self.expect_found_below(share)

    def test_the_usual_places_of_an_installation_are_fontconfigs_own(self):
        configuration = pathlib.Path("/etc/fonts/fonts.conf").read_text(encoding="utf-8")
        for folder in "/usr/share/fonts", "/usr/local/share/fonts":
            self.assertIn(f"<dir>{folder}</dir>", configuration)

    def test_the_script_offers_them_to_one_user(self):
        share = self.folder / "share"
        for _ in range(2):
            subprocess.run([OFFER, built.build / "fonts"], check=True,
                           env=dict(os.environ, XDG_DATA_HOME=str(share)))
        self.expect_found_below(share)

    def test_the_script_takes_the_home_where_nothing_else_is_said(self):
        home = self.folder / "home"
        environment = {"PATH": os.environ["PATH"], "HOME": str(home)}
        subprocess.run([OFFER, built.build / "fonts"], check=True, env=environment)
        own = home / ".local" / "share" / "fonts" / "tavrollo"
        self.assertEqual(sorted(built.FAMILIES.values()), sorted(path.name for path in own.iterdir()))
        self.expect_found_below(home / ".local" / "share")

    def test_the_script_replaces_an_older_font_and_leaves_an_equal_one_alone(self):
        share = self.folder / "share"
        own = share / "fonts" / "tavrollo"
        own.mkdir(parents=True)
        (own / "Code128.ttf").write_bytes(b"old")
        command = [OFFER, built.build / "fonts"]
        environment = dict(os.environ, XDG_DATA_HOME=str(share))
        subprocess.run(command, check=True, env=environment)
        self.assertEqual(built.font_path("Code 128").read_bytes(), (own / "Code128.ttf").read_bytes())
        os.utime(own / "Code128.ttf", (1, 1))
        subprocess.run(command, check=True, env=environment)
        self.assertEqual(1, (own / "Code128.ttf").stat().st_mtime)

    def test_the_script_fails_where_it_cannot_write(self):
        (self.folder / "share").write_bytes(b"")
        status = subprocess.run([OFFER, built.build / "fonts"], stderr=subprocess.DEVNULL,
                                env=dict(os.environ, XDG_DATA_HOME=str(self.folder / "share")),
                                check=False).returncode
        self.assertNotEqual(0, status)


if __name__ == "__main__":
    built.run()
