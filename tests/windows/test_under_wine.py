#!/usr/bin/env python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""The program for Windows, under Wine: its windows, its tray icon, commands of a real Firefox, the
installer. Each test leaves pictures of what was seen (BUILD/seen).

usage: test_under_wine.py [--build BUILD] [unittest's arguments]
"""

import argparse
import os
import re
import shutil
import subprocess
import sys
import time
import unittest

from wine_stage import WineStage, wait_for

_BUILD = "build/windows-qt"
_SPLASH = 400    # pixels; the icon, the menu and the notice are narrower
_TEAL = "#12837B"  # most of the program's icon
_BITMAPS = (_TEAL, "#C77A10", "#8159C6", "#D0443C")  # what the entries' bitmaps are drawn in
_KNOWN = 1_400_000_000

FIRST = "Tavrollo : Initialisation du programme"
SECOND = "Tavrollo : Lancements multiples"
OPTIONS = "Tavrollo : Paramètres"
SYNCHRO = "Tavrollo : Synchronisation de la sauvegarde"
BARCODE = "Ostrelle : Prévisualiser un code barre"

# Keys that lead to an entry of the open menu.
TAVROLLO = ("Down", "Down", "Right")
SETTINGS = (*TAVROLLO, "Down", "Down")
BARCODES = (*TAVROLLO, "Down", "Down", "Down", "Down")
QUIT = ("Down",) * 3
SYNCHRONISE = ("Down",) * 5


class UnderWine(unittest.TestCase):
    """A stage of its own for each class: what stands in the way of one does not of another."""

    @classmethod
    def setUpClass(cls):
        cls.stage = WineStage(_BUILD)
        cls.enterClassContext(cls.stage)
        cls.companion, cls.desktop, cls.wine = (cls.stage.companion, cls.stage.desktop,
                                                cls.stage.wine)

    def open_menu(self):
        before = self.stage.shapes()

        def opened():
            self.stage.click_icon()
            try:
                return wait_for(lambda: set(self.stage.shapes()) - set(before), "the menu", 8)
            except TimeoutError:
                self.stage.photograph("menu-missing")
                return None
        menu = wait_for(opened, "the menu", 40).pop()
        self.stage.give_focus(menu)
        return self.stage.shapes()[menu]

    def choose(self, keys):
        """Opens the tray menu and chooses what these keys lead to."""
        self.open_menu()
        self.stage.xdotool("key", "--delay", "150", *keys, "Return")

    def wait_for_splash_to_go(self):
        """A window that goes closes the menu."""
        quiet_since = time.monotonic()
        deadline = quiet_since + 60
        while time.monotonic() < deadline:
            if any(shape[2] >= _SPLASH for shape in self.stage.shapes().values()):
                quiet_since = time.monotonic()
            if time.monotonic() > quiet_since + 2:
                return
            time.sleep(0.1)
        raise TimeoutError("the splash stays")


class Commands(UnderWine):
    """What a page in Firefox asks for is carried out, and what stands in the files then."""

    @classmethod
    def setUpClass(cls):
        super().setUpClass()
        cls.stage.begin()

    def test_a_the_start_opens_the_first_page(self):
        (line, _), *_ = self.stage.recorder.wait_for_starts(1, "firefox")
        self.assertIn("C:\\Tav\\nav\\res_css\\htm\\start.html", line)

    def test_runapp_starts_a_program_with_its_parameters(self):
        program = self.stage.recorder.make(
            os.path.join(self.stage.programs, "mon été.exe"), "programme")
        self.stage.command("runapp", "C:/Outils/mon été.exe", 'un "deux trois" C:\\a\\b "c\\\\"')
        (line, folder), = self.stage.recorder.wait_for_starts(1, "programme")
        self.assertEqual(line, '"' + self.wine.path(program) + '" un "deux trois" C:\\a\\b "c\\\\"')
        self.assertEqual(folder, "Z:\\")  # the root of the drive that the program itself runs on

    def test_shellexe_opens_a_document_with_its_program(self):
        self.companion.user_file("Élèves/plan d'été.pdf", b"%PDF-1.4\n")
        self.stage.command("shellexe", "../../user_datas/Élèves/plan d'été.pdf")
        (line, _), = self.stage.recorder.wait_for_starts(1, "document")
        self.assertTrue(line.endswith('"C:\\Tav\\nav\\user_datas\\Élèves\\plan d\'été.pdf"'), line)

    def test_notepad_gets_its_command_line(self):
        self.companion.user_file("a b.txt")
        self.stage.command("notepad", "../../user_datas/a b.txt")
        (line, _), = self.stage.recorder.wait_for_starts(1, "notepad")
        self.assertEqual(line, "notepad C:\\Tav\\nav\\user_datas\\a b.txt")

    def test_createlink_writes_the_shortcut_in_the_encodings_of_its_file(self):
        path = self.companion.page_path("res_css/js/shortQrCode.js")
        with open(path, "rb") as file:
            before = file.read()
        free = int(re.search(rb"FreeId=(\d+)", before.replace(b" ", b"")).group(1))
        self.stage.command("createlink", "loc../../user_datas/été.pdf", "Plan d'été")
        with open(path, "rb") as file:
            after = file.read()
        self.assertIn(str(free + 1).encode(), after.split(b"\r\n")[0])
        self.assertIn(f"{free:09d}".encode(), after)
        self.assertIn("Plan d'été_|_".encode() + "../../user_datas/été.pdf".encode("cp1252"), after)
        self.assertEqual(after.count(b"\n"), after.count(b"\r\n"))

    def test_the_notice_slides_up(self):
        wait_for(lambda: not self.stage.shapes(), "the end of earlier notices", 30)
        self.companion.user_file("note.txt")
        self.stage.command("notepad", "../../user_datas/note.txt")

        def tops():
            return [shape[1] for shape in self.stage.shapes().values()]
        first = wait_for(tops, "the notice", 10)[0]
        wait_for(lambda: any(top < first for top in tops()), "the notice higher up", 10)
        time.sleep(1)
        self.stage.photograph("notice")
        wait_for(lambda: not tops(), "the end of the notice", 30)


class Windows(UnderWine):
    """The windows that the tray menu opens."""

    @classmethod
    def setUpClass(cls):
        super().setUpClass()
        cls.backup = os.path.join(cls.wine.drive, "Sauvegarde")
        shutil.rmtree(cls.backup, ignore_errors=True)
        os.makedirs(cls.backup)
        store = os.path.join(cls.desktop.home, "store")
        cls.settings = {"store": store, "backup": "C:\\Sauvegarde\\"}
        cls.companion.configure(**cls.settings)
        cls.write_store(store, "aucun")
        cls.companion.start()
        cls.stage.recorder.wait_for_starts(1, "firefox", 120)
        cls.companion.let_it_prime()
        time.sleep(3)
        cls.write_store(store, "déverrouille")  # as the teacher's page does
        cls.companion.wait_for_handled("déverrouille", 60)

    @staticmethod
    def write_store(path, last):
        """A store with one command; no browser, whose window would be in the menu's way."""
        with open(path, "wb") as file:
            file.write(f"xxxTavr1CodeToExelzck_|_false_|_{last}_e-o-v_".encode())

    def setUp(self):
        self.wait_for_splash_to_go()

    def test_a_the_menu_has_its_bitmaps(self):
        x, y, _, height = self.open_menu()
        self.stage.xdotool("key", "--delay", "150", *TAVROLLO)
        time.sleep(1)
        path = self.stage.photograph("menu")
        for colour in _BITMAPS:
            self.assertGreater(dots_in(path, (x, y, 26, height), colour), 30, colour)
        self.stage.xdotool("key", "--delay", "150", "Escape", "Escape")

    def test_b_the_settings_are_written_as_they_are_on_the_other_system(self):
        self.choose(SETTINGS)
        self.stage.window(OPTIONS)
        time.sleep(1)
        self.stage.photograph("settings")
        os.remove(self.companion.config)
        self.desktop.press(OPTIONS, "Return")
        self.stage.wait_until_gone(OPTIONS)
        with open(self.companion.config, "rb") as file:
            self.assertEqual(file.read(), self.companion.settings_text(**self.settings))

    def test_c_barcodes_are_drawn_with_the_programs_own_fonts(self):
        self.choose(BARCODES)
        self.stage.window(BARCODE)
        time.sleep(1)
        self.stage.xdotool("type", "--delay", "80", "400638133393")
        time.sleep(1)
        picture = self.stage.photograph("barcodes")
        self.desktop.press(BARCODE, "Escape")
        self.stage.wait_until_gone(BARCODE)
        self.assertEqual(barcodes_in(picture), ["4006381333931"])

    def make_files(self):
        """On both sides, with what has to become of them."""
        own = self.companion.page_path("user_datas")
        files = {(own, "docs/nouveau é.txt"): (b"new", 0), (own, "plus récent"): (b"newer", 100),
                 (self.backup, "plus récent"): (b"older", 0),
                 (self.backup, "é/restauré"): (b"back", 0), (own, "ancien"): (b"stale", 0),
                 (self.backup, "ancien"): (b"fresh", 6), (own, "presque"): (b"same", 0),
                 (self.backup, "presque"): (b"five", 5)}
        shutil.rmtree(own)
        for (folder, name), (content, later) in files.items():
            path = os.path.join(folder, name)
            os.makedirs(os.path.dirname(path), exist_ok=True)
            with open(path, "wb") as file:
                file.write(content)
            os.utime(path, (_KNOWN + later, _KNOWN + later))
        with open(self.companion.page_path("res_css/js/shortQrCode.js"), "rb") as file:
            shortcuts = file.read()  # the window lays it beside the user's files, to save it too
        both = {"docs/nouveau é.txt": b"new", "plus récent": b"newer", "é/restauré": b"back",
                "ancien": b"fresh", "shortQrCode.js": shortcuts}
        return {own: {**both, "presque": b"same"}, self.backup: {**both, "presque": b"five"}}

    def test_d_two_folders_are_synchronised_by_the_rule_of_five_seconds(self):
        expected = self.make_files()
        self.choose(SYNCHRONISE)
        self.desktop.press(SYNCHRO, "Return")  # the box: the drive is there
        wait_for(lambda: self.wide_window(SYNCHRO), "the window for synchronising", 30)
        time.sleep(1)
        self.stage.photograph("synchro-before")
        self.desktop.press(SYNCHRO, *["Tab"] * 4, "space")
        time.sleep(3)
        self.stage.photograph("synchro-compared")
        self.desktop.press(SYNCHRO, "Tab", "space")

        def done():
            return all(contents_of(folder) == files for folder, files in expected.items())
        try:
            wait_for(done, "the files on both sides", 30)
        except TimeoutError:
            self.stage.photograph("synchro-failed")
            for folder, files in expected.items():
                self.assertEqual(contents_of(folder), files)
        time.sleep(3)  # in which nothing else may be copied
        self.stage.photograph("synchro-done")
        for folder, files in expected.items():
            self.assertEqual(contents_of(folder), files)

    def wide_window(self, title):
        number = self.stage.window(title)
        return self.stage.shapes().get(number, (0, 0, 0, 0))[2] > 600


class FirstStart(UnderWine):
    """Without settings the program searches Firefox's profiles."""

    def test_the_store_of_a_real_firefox_is_found_and_noted(self):
        stage = self.stage
        stage.firefox.start()
        stage.firefox.page.navigate("file:///usr/share/")
        stage.firefox.page.set_cookie_text("a=b; path=/; max-age=1000")
        wait_for(lambda: os.path.exists(stage.firefox.store + "-wal"), "Firefox's log")
        users = os.path.join(self.wine.drive, "users", self.desktop.environment["USER"])
        profile = os.path.join(users, "AppData/Roaming/Mozilla/Firefox/Profiles/essai.default")
        shutil.rmtree(os.path.dirname(profile), ignore_errors=True)
        os.makedirs(profile)
        for ending in ("", "-wal"):  # as they are while the browser runs
            shutil.copy(stage.firefox.store + ending, profile)

        os.remove(self.companion.config)
        self.companion.start(wait=False)
        self.stage.window(FIRST, 60)
        time.sleep(1)
        stage.photograph("first-start")
        self.desktop.press(FIRST, "Return")
        stage.recorder.wait_for_starts(1, "firefox", 60)
        time.sleep(1)
        stage.photograph("first-start-done")
        with open(self.companion.config, encoding="cp1252", newline="") as file:
            lines = file.read().split("\r\n")
        self.assertEqual(lines[6], self.wine.path(os.path.join(profile, "cookies.sqlite")))
        self.assertEqual(lines[10], "C:\\Tav\\nav\\res_css\\js\\shortQrCode.js")
        (line, _), = stage.recorder.starts("firefox")
        self.assertIn("C:\\Tav\\nav\\res_css\\htm\\init_cookie.html", line)


class SecondStart(UnderWine):
    """The program is started while it runs."""

    @classmethod
    def setUpClass(cls):
        super().setUpClass()
        with open(os.path.join(cls.desktop.home, "store"), "wb") as file:
            file.write(b"no command here")
        cls.companion.configure(os.path.join(cls.desktop.home, "store"))
        cls.companion.start(wait=False)
        cls.splash = wait_for(cls.splash_shown, "the splash", 90)
        time.sleep(1)
        cls.stage.photograph("splash")
        cls.stage.recorder.wait_for_starts(1, "firefox", 90)

    @classmethod
    def splash_shown(cls):
        return any(shape[2] >= _SPLASH for shape in cls.stage.shapes().values())

    def test_0_the_splash_is_shown_and_goes(self):
        self.wait_for_splash_to_go()
        time.sleep(1)
        path = self.stage.photograph("tray-icon")
        self.assertGreater(dots_in(path, self.stage.icon_place(), _TEAL), 30)

    def second_start(self):
        return self.desktop.start(self.wine.wine, self.wine.path(self.companion.program),
                                  name="second")

    def test_a_no_ends_the_second_one_alone(self):
        second = self.second_start()
        self.stage.window(SECOND)
        time.sleep(1)
        self.stage.photograph("second-start")
        self.desktop.press(SECOND, "Right", "Return")
        self.assertEqual(second.wait(timeout=30), 0)
        self.assertTrue(self.companion.running)

    def test_b_yes_ends_the_running_one_and_starts_the_program_again(self):
        self.assertEqual(len(self.stage.recorder.starts("firefox")), 1)
        second = self.second_start()
        self.desktop.press(SECOND, "Return")
        self.assertEqual(second.wait(timeout=30), 0)
        wait_for(lambda: not self.companion.running, "the end of the running instance", 40)
        # It started as a whole: the start page of the relaunched program was opened too.
        self.stage.recorder.wait_for_starts(2, "firefox", 60)


class Installer(UnderWine):
    """setup_Tavrollo.exe, from the first installation to the removal."""

    folder = "C:\\Essai\\Mon Tavrollo"

    def here(self, *names):
        return os.path.join(self.wine.drive, "Essai", "Mon Tavrollo", *names)

    def install(self, more=""):
        """Silently. By a batch file: the folder stands at the end as it is, without quotes."""
        setup = self.wine.path(os.path.join(self.stage.build, "setup_Tavrollo.exe"))
        batch = os.path.join(self.desktop.folder, "install.bat")
        with open(batch, "wb") as file:
            file.write(f'@"{setup}" /S {more}\r\n@exit %errorlevel%\r\n'.encode("ascii"))
        return self.wine.run("cmd", "/c", self.wine.path(batch), timeout=180)

    def remove(self):
        status = self.wine.run(self.wine.path(self.here("uninstall.exe")), "/S")
        # It goes on in a copy of itself, so as to take its own file away.
        wait_for(lambda: not os.path.exists(self.here("uninstall.exe")), "the removal", 60)
        time.sleep(1)
        return status

    def setUp(self):
        shutil.rmtree(os.path.join(self.wine.drive, "Essai"), ignore_errors=True)

    def test_it_installs_upgrades_and_removes_and_keeps_what_is_the_users(self):
        self.assertEqual(self.install("/D=" + self.folder), 0)
        for name in ("Tavrollo.exe", "reload.exe", "Qt6Core.dll", "template/nav/index.html",
                     "platforms/qwindows.dll", "fonts/Code128.ttf", "uninstall.exe"):
            self.assertTrue(os.path.isfile(self.here(name)), name)
        self.assertEqual(os.listdir(self.here("nav")), [])
        self.assertEqual(self.wine.registered("HKCU\\Software\\Tavrollo", "Folder"), self.folder)

        # The program takes its folder for the program folder and fills it.
        companion = self.start_installed()
        self.desktop.end(companion)
        self.wine.end_all()
        self.assertTrue(os.path.isfile(self.here("nav", "index.html")))
        changed = {"config.cfg": b"mine", "nav/res_css/js/shortQrCode.js": b"// mine",
                   "nav/user_datas/mon plan.txt": b"plan", "nav/eleve.html": b"<p>mine",
                   "fonts/mine.ttf": b"", "template-mine.txt": b"x"}
        for name, content in changed.items():
            with open(self.here(name), "wb") as file:
                file.write(content)

        # An upgrade: what the last one laid out, and nothing else, is replaced.
        with open(self.here("Tavrollo.exe"), "wb") as file:
            file.write(b"old")
        self.assertEqual(self.install(), 0)  # it knows where
        self.assertGreater(os.path.getsize(self.here("Tavrollo.exe")), 1000)
        self.assert_kept(changed)

        self.assertEqual(self.remove(), 0)
        self.assert_kept(changed)
        for name in ("Tavrollo.exe", "Qt6Core.dll", "platforms", "template", "LICENSE.txt"):
            self.assertFalse(os.path.exists(self.here(name)), name)
        self.assertTrue(os.path.isfile(self.here("nav", "index.html")))
        self.assertEqual(self.wine.registered("HKCU\\Software\\Tavrollo", "Folder"), "")

    def assert_kept(self, changed):
        for name, content in changed.items():
            with open(self.here(name), "rb") as file:
                self.assertEqual(file.read(), content, name)

    def start_installed(self):
        process = self.desktop.start(self.wine.wine, self.folder + "\\Tavrollo.exe",
                                     name="installed")
        wait_for(lambda: os.path.isfile(self.here("nav", "index.html")), "the pages", 60)
        self.stage.window("Tavrollo : Initialisation")
        self.stage.photograph("installed")
        return process

    def test_what_was_never_started_leaves_nothing_behind(self):
        self.assertEqual(self.install("/D=" + self.folder), 0)
        self.assertEqual(self.remove(), 0)
        self.assertFalse(os.path.exists(self.here()))


def contents_of(folder):
    """{path in the folder: bytes} of all files in it."""
    found = {}
    for above, _, names in os.walk(folder):
        for name in names:
            path = os.path.join(above, name)
            with open(path, "rb") as file:
                found[os.path.relpath(path, folder)] = file.read()
    return found


def barcodes_in(picture):
    """What a reader of barcodes finds in a picture."""
    done = subprocess.run(["zbarimg", "-q", "--raw", picture], capture_output=True, text=True,
                          check=False)
    return done.stdout.split("\n")[:-1]


def dots_in(picture, area, colour):
    """How many dots in a part of a picture have a colour."""
    x, y, width, height = area
    done = subprocess.run(["convert", picture, "-crop", f"{width}x{height}+{x}+{y}", "+repage",
                           "-fuzz", "4%", "-fill", "#00ff00", "-opaque", colour,
                           "-fill", "#000000", "+opaque", "#00ff00",
                           "-format", "%[fx:mean.g*w*h]", "info:"],
                          capture_output=True, text=True, check=True)
    return round(float(done.stdout))


def main():
    global _BUILD
    parser = argparse.ArgumentParser(add_help=False)
    parser.add_argument("--build", default=_BUILD)
    known, rest = parser.parse_known_args()
    _BUILD = known.build
    shutil.rmtree(os.path.join(_BUILD, "seen"), ignore_errors=True)
    unittest.main(module="__main__", argv=[sys.argv[0], *rest], verbosity=2)


if __name__ == "__main__":
    main()
