#!/usr/bin/env python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""The Debian package, as cpack builds it now: test_package.py --build FOLDER."""
import argparse
import gzip
import os
import shutil
import signal
import stat
import subprocess
import sys
import tempfile
import time
import unittest

build = None

EXPECTED = """
usr/bin/tavrollo usr/bin/tavrolloctl usr/libexec/tavrollo/tavrollo usr/libexec/tavrollo/reload
usr/share/applications/tavrollo.desktop
usr/share/bash-completion/completions/tavrollo usr/share/bash-completion/completions/tavrolloctl
usr/share/doc/tavrollo/README.md usr/share/doc/tavrollo/changelog.gz usr/share/doc/tavrollo/copyright
usr/share/doc/tavrollo/CONTRIBUTING.md usr/share/doc/tavrollo/SECURITY.md
usr/share/doc/tavrollo/docs/architecture.md usr/share/doc/tavrollo/docs/images/house.svg
usr/share/doc/tavrollo/docs/file-formats.md usr/share/doc/tavrollo/docs/images/page-prof.png
usr/share/fish/vendor_completions.d/tavrollo.fish usr/share/fish/vendor_completions.d/tavrolloctl.fish
usr/share/fonts/truetype/tavrollo/Code128.ttf usr/share/fonts/truetype/tavrollo/CodeEAN13.ttf
usr/share/fonts/truetype/tavrollo/Code2of5interleaved.ttf
usr/share/fonts/truetype/tavrollo/Code3de9.ttf usr/share/fonts/truetype/tavrollo/Code3de9Lab.ttf
usr/share/icons/hicolor/48x48/apps/tavrollo.png usr/share/icons/hicolor/scalable/apps/tavrollo.svg
usr/share/metainfo/org.example.tavrollo.metainfo.xml
usr/share/man/man1/tavrollo.1.gz usr/share/man/man1/tavrolloctl.1.gz
usr/share/tavrollo/nav/index.html usr/share/tavrollo/nav/user_datas/bienvenue.html
usr/share/tavrollo/modeles_word_excel/modele_defaut.doc usr/share/tavrollo/shortQrCode_exemple.js
usr/share/zsh/site-functions/_tavrollo usr/share/zsh/site-functions/_tavrolloctl
""".split()


def run(*words, **more):
    done = subprocess.run(words, capture_output=True, text=True, timeout=300, **more)
    if done.returncode != 0:
        raise AssertionError(f"{words}: {done.returncode}\n{done.stdout}{done.stderr}")
    return done.stdout


def tree(root):
    """Everything below the folder: its path to its mode and, of links, where they lead."""
    found = {}
    for folder, folders, files in os.walk(root):
        for name in folders + files:
            path = os.path.join(folder, name)
            mode = os.lstat(path).st_mode
            target = os.readlink(path) if stat.S_ISLNK(mode) else None
            found[os.path.relpath(path, root)] = (stat.filemode(mode), target)
    return found


def content(*path):
    with open(os.path.join(*path), "rb") as file:
        return file.read()


class Package(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.folder = tempfile.mkdtemp(prefix="tavrollo-package-")
        run("cpack", "--config", os.path.join(build, "CPackConfig.cmake"), "-B", cls.folder)
        (name,) = [name for name in os.listdir(cls.folder) if name.endswith(".deb")]
        cls.deb = os.path.join(cls.folder, name)
        cls.unpacked = os.path.join(cls.folder, "unpacked")
        run("dpkg-deb", "-x", cls.deb, cls.unpacked)

    @classmethod
    def tearDownClass(cls):
        shutil.rmtree(cls.folder, ignore_errors=True)

    def field(self, name):
        return run("dpkg-deb", "-f", self.deb, name).strip()

    def test_holds_what_a_desktop_looks_for_where_it_looks(self):
        found = tree(self.unpacked)
        self.assertEqual([path for path in EXPECTED if path not in found], [])
        self.assertEqual([path for path in found if not path.startswith("usr")], [])

    def test_installing_by_hand_gives_the_same_tree(self):
        installed = os.path.join(self.folder, "installed")
        run("cmake", "--install", build, "--prefix", "/usr", "--strip", env=dict(os.environ, DESTDIR=installed))
        self.assertEqual(tree(installed), tree(self.unpacked))
        for path, (mode, _) in tree(installed).items():
            if mode.startswith("-"):
                self.assertEqual(content(installed, path), content(self.unpacked, path), path)

    def test_is_called_as_debian_calls_packages(self):
        version = self.field("Version")
        self.assertEqual(os.path.basename(self.deb), f"tavrollo_{version}_{self.field('Architecture')}.deb")
        with gzip.open(os.path.join(self.unpacked, "usr/share/doc/tavrollo/changelog.gz"), "rt") as changes:
            self.assertTrue(changes.readline().startswith(f"tavrollo ({version}) "))

    def test_names_the_packages_that_the_program_needs(self):
        needed = {each.split()[0].rstrip(",") for each in self.field("Depends").split(", ")}
        for package in ("libc6", "libstdc++6", "libqt6widgets6", "libqt6svg6", "xdg-utils"):
            self.assertIn(package, needed)

    def test_lintian_finds_nothing_that_is_not_explained(self):
        if not shutil.which("lintian"):
            self.skipTest("lintian is not installed")
        said = subprocess.run(["lintian", "--allow-root", "--no-cfg", "--tag-display-limit", "0", self.deb],
                              capture_output=True, text=True, timeout=300)
        self.assertEqual((said.returncode, said.stdout), (0, ""), said.stderr)

    def test_programs_start_from_where_they_are_installed(self):
        version = self.field("Version")
        for name in ("tavrollo", "tavrolloctl"):
            program = os.path.join(self.unpacked, "usr/bin", name)
            self.assertEqual(run(program, "--version"), f"{name} {version}\n")

    def test_first_start_fills_the_users_folder_from_what_is_installed(self):
        home = os.path.join(self.folder, "home")
        os.makedirs(home, mode=0o700)
        # What is missing is a screen and a session: boxes are asked into the void.
        environment = {"PATH": os.environ["PATH"], "HOME": home, "XDG_RUNTIME_DIR": home,
                       "QT_QPA_PLATFORM": "offscreen", "DBUS_SESSION_BUS_ADDRESS": "disabled:"}
        program = subprocess.Popen([os.path.join(self.unpacked, "usr/bin/tavrollo")], env=environment,
                                   stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        note = os.path.join(home, "Tavrollo", "fichiers_installes.txt")
        deadline = time.monotonic() + 30
        while not os.path.exists(note) and time.monotonic() < deadline:
            time.sleep(0.05)
        program.send_signal(signal.SIGTERM)
        program.wait(timeout=30)
        installed = os.path.join(self.unpacked, "usr/share/tavrollo")
        filled = tree(os.path.join(home, "Tavrollo"))
        for path, (mode, _) in tree(installed).items():
            self.assertIn(path, filled)
            if mode.startswith("-"):
                self.assertEqual(content(installed, path), content(home, "Tavrollo", path), path)
        self.assertTrue(os.path.exists(note))


if __name__ == "__main__":
    arguments = argparse.ArgumentParser()
    arguments.add_argument("--build", required=True)
    options, rest = arguments.parse_known_args()
    build = os.path.abspath(options.build)
    unittest.main(argv=[sys.argv[0], *rest])
